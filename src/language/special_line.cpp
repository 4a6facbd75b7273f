#include "language/special_line.h"

#include "language/def_unit.h"
#include "machine/calculator.h"
#include "machine/variables.h"
#include "units/default_system.h"

#include <algorithm>
#include <array>

namespace metrify {

namespace {

/// The arguments of a keyword's action.
struct special_line {
    cursor& expptr; // after the keyword
    int& counter;
    line_runner run;
    text_str*& out;
    text_str*& err;
};

// Most answers are followed by an empty line.
void end_answer(special_line& line) {
    append(line.out, "\n");
}

template <unit_system system>
void set_system(special_line& line) {
    run_system_statement(system, line.expptr, line.out, line.err);
    if (str_is_empty(line.err))
        ++line.counter;
    end_answer(line);
}

void define_unit(special_line& line) {
    define_user_unit(line.expptr, line.out, line.err);
    if (str_is_empty(line.err))
        ++line.counter;
    else
        append(line.out, line.err);
    end_answer(line);
}

void begin_block(special_line& line) {
    begin_func_block(line.expptr);
}

void end_block(special_line& line) {
    end_func_block(line.expptr);
    if (!is_block_defined()) {
        append(line.out, "ERROR: Missing BEGIN.\n");
        current_calculator().has_failed = true;
    }
    ++line.counter;
    end_answer(line);
}

void print_block(special_line& line) {
    keep_all_variables(); // which the lines of the listing assign
    run_block_listing("Header:", "PrintFunc", line.run, line.out, line.err);
    ++line.counter;
}

struct keyword {
    std::string_view word;
    void (*act)(special_line&);
};

constexpr std::array<keyword, 8> keywords = {{
    {default_systems[system_MKS].name, set_system<system_MKS>},
    {default_systems[system_cgs].name, set_system<system_cgs>},
    {default_systems[system_FPS].name, set_system<system_FPS>},
    {default_systems[system_IPS].name, set_system<system_IPS>},
    {"DefUnit", define_unit},
    {"begin", begin_block},
    {"end", end_block},
    {"PrintFunc", print_block},
}};

} // namespace

bool is_special_function(cursor& expptr, int& counter, line_runner run, text_str*& out, text_str*& err) {
    cursor after_word = expptr;
    skip_blanks_and_comments(after_word);
    if (!is_mnemonic(false, after_word))
        return false;
    const std::string_view word = take_name(after_word);
    const auto* const found = std::find_if(keywords.begin(), keywords.end(), [word](const keyword& k) {
        return text_compare_nocase(word, k.word) == 0;
    });
    if (found == keywords.end())
        return false;
    expptr = after_word;
    special_line line = {expptr, counter, run, out, err};
    found->act(line);
    skip_to_line_end(expptr);
    return true;
}

} // namespace metrify
