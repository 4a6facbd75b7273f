#include "language/unit_definitions.h"

#include "language/def_unit.h"
#include "language/expression.h"

namespace metrify {

namespace {

std::string without_newline(std::string_view message) {
    if (!message.empty() && message.back() == '\n')
        message.remove_suffix(1);
    return std::string(message);
}

// Defines the unit of one line that isn't empty. Returns the fault, or an empty text.
std::string define_unit_of_line(cursor& expptr) {
    if (match_keyword_nocase(expptr, "DefUnit") != 0)
        return "only DefUnit lines and comments can be here";
    work_text answer;
    work_text err;
    reset_expression_state();
    define_user_unit(expptr, answer.str, err.str);
    if (err.view().empty() && answer.view().empty())
        return "the DefUnit line defines no unit";
    return without_newline(err.view());
}

} // namespace

std::vector<definition_fault> define_units(const std::string& definitions) {
    std::vector<definition_fault> faults;
    cursor expptr(definitions.c_str());
    for (int line = 1; !at_text_end(expptr); ++line) {
        const cursor start = expptr;
        skip_blanks_and_comments(expptr);
        if (!at_line_end(expptr)) {
            std::string fault = define_unit_of_line(expptr);
            skip_to_line_end(expptr);
            if (!fault.empty())
                faults.push_back({line, std::move(fault)});
        }
        line += static_cast<int>(count_char_in_text(text_span(start, expptr), '\n')); // continuations
        if (!at_text_end(expptr))
            ++expptr.at;
    }
    reset_expression_state();
    return faults;
}

} // namespace metrify
