#include "language/driver.h"

#include "base/interruption.h"
#include "language/statement.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"
#include "machine/variables.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace metrify {

namespace {

// Lines of an input box's template. They are dropped without echo.
constexpr std::array<std::string_view, 8> directions = {
    "#  DIRECTIONS:",
    "#  (1) Enter your problem HERE in the INPUT tab.",
    "#  (2) Click the CALCULATE button.",
    "#  (3) The results are displayed in the OUTPUT tab.",
    "#  (3) The results are displayed under the OUTPUT tab.",
    "#  For examples, click on the QUICK START link or the Examples tab.",
    "#  See the QUICK START link or the Examples tab for more details.",
    "#  START TYPING BELOW:",
};

bool is_directions_line(cursor line_start) {
    return *line_start == '#' &&
           std::any_of(
               directions.begin(), directions.end(),
               [&](std::string_view text) { return match_keyword(false, true, line_start, text) == 0; });
}

// A comment and the comment lines directly after it are echoed as one block, without a number.
void echo_comment_block(const cursor& line_start, cursor& expptr, text_str*& out) {
    while (absorb_next_comment_line(expptr)) {
    }
    append(out, "\n", text_span(line_start, expptr), "\n\n");
}

void run_statement(std::string_view prefix, int& counter, const cursor& line_start, cursor& expptr,
                   text_str*& out, text_str*& err) {
    ++counter;
    code_list recorded;
    code_list* const code = is_block_recording() ? &recorded : nullptr;
    calculator& current = current_calculator();
    const bool had_failed = std::exchange(current.has_failed, false);
    const line_result result =
        compile_one_full_line(prefix, counter, line_start, expptr, run_lines, out, code, err);
    if (!str_is_empty(err))
        current.has_failed = true;
    if (prefix.empty() && current.has_failed && is_interrupted())
        undo_statement();
    current.has_failed = current.has_failed || had_failed;
    if (result != line_result::compiled || !str_is_empty(err))
        --counter; // a line that fails has no number, and special lines have added one themselves
    else if (code != nullptr)
        store_block_code(recorded);
}

// Processes one line, or one comment block. The cursor ends at the line's end, or stays on a line that is
// dropped.
void process_an_expression(std::string_view prefix, int& counter, cursor& expptr, text_str*& out,
                           text_str*& err) {
    str_clear(&err);
    const cursor line_start = expptr;
    if (is_directions_line(line_start))
        return;
    skip_blanks_and_comments(expptr);
    if (span_begins_with_comment(line_start, expptr))
        echo_comment_block(line_start, expptr, out);
    else if (!at_line_end(expptr))
        run_statement(prefix, counter, line_start, expptr, out, err);
}

// The counter is the number of the latest statement.
void run_numbered_lines(std::string_view prefix, int& counter, cursor expptr, text_str*& out,
                        text_str*& err) {
    while (!at_text_end(expptr) && !is_interrupted()) {
        process_an_expression(prefix, counter, expptr, out, err);
        skip_blanks_and_comments(expptr);
        if (!at_text_end(expptr))
            ++expptr.at;
    }
    if (!at_text_end(expptr)) // interrupted between two statements
        current_calculator().has_failed = true;
}

} // namespace

listing::listing(std::string_view text, bool has_failures)
    : length_(text.size()), has_failures_(has_failures), text_(cvector(0, static_cast<long>(text.size()))) {
    text.copy(text_.data(), length_);
    text_[static_cast<long>(length_)] = '\0';
}

void run_lines(std::string_view prefix, cursor expptr, text_str*& out, text_str*& err) {
    int counter = 0;
    run_numbered_lines(prefix, counter, expptr, out, err);
}

listing run_further_lines(const char* text) {
    constexpr std::size_t least_capacity = 1024;
    const std::size_t capacity = std::max(2 * std::strlen(text), least_capacity);
    work_text out(capacity, capacity);
    work_text err;
    current_calculator().has_failed = false;
    current_calculator().has_result = false;
    run_numbered_lines("", current_calculator().statements, cursor(text), out.str, err.str);
    return listing(out.view(), current_calculator().has_failed);
}

listing interpret_dimensional_input_lines(const char* text) {
    return interpret_dimensional_input_lines(text, {});
}

listing interpret_dimensional_input_lines(const char* text, const std::string& unit_definitions) {
    reset_calculator();
    if (!unit_definitions.empty())
        define_units(unit_definitions);
    listing shown = run_further_lines(text);
    release_calculator_memory();
    return shown;
}

} // namespace metrify
