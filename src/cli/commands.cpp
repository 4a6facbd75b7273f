#include "cli/commands.h"

#include "base/cursor.h"
#include "base/interruption.h"
#include "base/number_text.h"
#include "cli/hints/hint_writer.h"
#include "cli/interrupt_key.h"
#include "cli/lookup/also.h"
#include "cli/lookup/function_list.h"
#include "cli/lookup/unit_document.h"
#include "cli/lookup/unit_list.h"
#include "cli/program_text.h"
#include "conversion/conversion.h"
#include "functions/function_help.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <algorithm>
#include <ostream>

namespace metrify {

namespace {

std::string_view without_trailing_newlines(std::string_view text) {
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

// The error cell is empty if an "=" precedes the message, in the units or in a result on an earlier line: the
// cell ends at the first "=".
void write_error_cell(const conversion& cells, std::ostream& err) {
    const std::string_view message = without_trailing_newlines(cells.text);
    if (!message.empty())
        err << message << '\n';
    else
        err << "metrify: the error cell is empty, since a \"=\" precedes the message:\n"
            << cells.answer->view();
}

// The hints follow the listing on a terminal.
void explain_listing(std::string_view shown, const call_extras& extras, std::ostream& out,
                     std::ostream& err) {
    out.flush();
    hint_writer(extras.unit_definitions, extras.everyday, err).explain_listing(shown);
}

} // namespace

int convert_command(double val, std::string_view in_units, std::string_view out_units, std::ostream& out,
                    std::ostream& err, const call_extras& extras) {
    const conversion cells = convert_units_by_line(val, in_units, out_units, extras.unit_definitions);
    number_buffer buffer;
    const std::string_view units = without_trailing_newlines(cells.text);
    switch (cells.outcome) {
    case conversion_outcome::converted:
        out << format_double(cells.number, buffer) << (units.empty() ? "" : " ") << units << '\n';
        if (extras.also)
            write_in_common_units(val, in_units, units, extras.unit_definitions, out);
        break;
    case conversion_outcome::error:
        write_error_cell(cells, err);
        break;
    case conversion_outcome::unmarked:
        err << "metrify: the units hold a line break, and the answer has neither a result nor a message\n";
        break;
    }
    const bool is_converted = cells.outcome == conversion_outcome::converted;
    if (extras.hints) {
        out.flush();
        hint_writer(extras.unit_definitions, extras.everyday, err)
            .explain_conversion(format_double(val, buffer), in_units, out_units,
                                is_converted ? conversion_state::converted : conversion_state::failed);
    }
    return is_converted ? 0 : status_failed;
}

int refuse_number(const std::string& val, std::string_view in_units, std::string_view out_units,
                  std::ostream& err, const call_extras& extras) {
    err << "VAL: '" << val << "' is not a number\nRun with --help for more information.\n";
    if (extras.hints)
        hint_writer(extras.unit_definitions, extras.everyday, err)
            .explain_conversion(val, in_units, out_units, conversion_state::not_a_number);
    return status_unreadable;
}

int refuse_words(const std::vector<std::string>& unexpected, const std::vector<std::string>& all,
                 std::ostream& err, const call_extras& extras) {
    constexpr std::size_t most_words = 3; // more are no matter of options
    err << "The following argument" << (unexpected.size() == 1 ? " was" : "s were") << " not expected:";
    for (const std::string& word : unexpected)
        err << ' ' << word;
    err << "\nRun with --help for more information.\n";
    if (extras.hints && all.size() > most_words)
        hint_writer(extras.unit_definitions, extras.everyday, err).explain_words(all);
    return status_unreadable;
}

int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out, std::ostream& err,
                const run_options& options, const call_extras& extras) {
    const std::vector<std::string> standard_input = {"-"};
    int status = 0;
    for (const std::string& file : files.empty() ? standard_input : files) {
        program_text program;
        if (!program.read_named(file, in, err)) {
            status = status_unreadable;
            continue;
        }
        interruption stop;
        const interruption_scope obeys(stop);
        const interrupt_key ends(stop);
        const listing shown =
            interpret_dimensional_input_lines(program.text.c_str(), extras.unit_definitions);
        out << shown.view();
        if (stop.is_requested()) {
            err << "metrify: interrupted\n";
            return status_interrupted;
        }
        if (extras.hints)
            explain_listing(shown.view(), extras, out, err);
        if (options.is_strict && shown.has_failures())
            status = std::max(status, status_failed);
    }
    return status;
}

int units_command(const unit_search& search, std::ostream& out, std::ostream& err,
                  const call_extras& extras) {
    calculator used;
    const calculator_scope scope(used);
    define_units(extras.unit_definitions);
    if (search.as_markdown) {
        out << unit_document();
        return 0;
    }
    return search.like.empty() ? list_units(search.text, out, err) : list_units_like(search.like, out, err);
}

int functions_command(std::string_view text, std::ostream& out, std::ostream& err) {
    return list_functions(text, out, err);
}

int functions_document_command(std::ostream& out) {
    out << help_document();
    return 0;
}

int checked_output(int status, std::ostream& out, std::ostream& err) {
    if (out.flush())
        return status;
    err << "metrify: standard output: not all of it could be written\n";
    return 2;
}

} // namespace metrify
