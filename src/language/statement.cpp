#include "language/statement.h"

#include "base/number_text.h"
#include "language/assignment.h"
#include "language/expression.h"
#include "language/special_line.h"
#include "machine/calculator.h"
#include "machine/operators.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "units/default_system.h"
#include "units/unit_rendering.h"

#include <array>

namespace metrify {

namespace {

constexpr std::string_view indent = "       ";

// True if the assignment will not change its variable.
bool assigns_held_variable(std::string_view target) {
    const var_entry* entry = target.empty() ? nullptr : find_var(target);
    return entry != nullptr && entry->held;
}

// The heading, and the line as typed, comment included. A line that assigns an independent variable during a
// solve has no effect and is marked as showing an updated value.
void write_heading_and_echo(std::string_view prefix, int counter, std::string_view target,
                            const cursor& line_start, cursor expptr, text_str*& out) {
    number_buffer number;
    skip_to_line_end(expptr);
    const std::string_view echo =
        assigns_held_variable(target) ? "UPDATED VALUE:" : text_span(line_start, expptr);
    append(out, "[  ", prefix, format_int(counter, number), " ] ", echo, "\n");
}

void write_message(text_str*& out, text_str*& err) {
    append(out, indent, str_view(err));
    current_calculator().has_failed = true;
}

// { ";" [ request ] }
// Results go to requested, messages directly to out, before the result line. True if a request has printed
// the value. Each request clears the error of the previous one; the error of the last one is kept.
bool serve_requests(const dim_value& result, cursor& expptr, text_str*& requested, text_str*& out,
                    text_str*& err) {
    bool served = false;
    skip_blanks_and_comments(expptr);
    while (!at_text_end(expptr) && accept_char(true, ';', expptr)) {
        skip_blanks_and_comments(expptr);
        if (rest_is_blank_before_comment(expptr))
            break;
        if (const default_system* row = match_default_system(expptr)) {
            print_value_in_system(row->system, requested, result, err, false);
            served = true;
        } else if (print_value_with_requested_units(requested, result, expptr, err, false)) {
            served = true;
        }
        if (!str_is_empty(err))
            write_message(out, err);
        skip_blanks_and_comments(expptr);
    }
    return served;
}

// Lists the block with the values that a solving built-in has found. True if a report was pending.
bool write_pending_report(line_runner run, text_str*& out, text_str*& err) {
    struct report {
        std::string_view header, prefix;
    };
    constexpr std::array<report, 5> reports = {{
        {}, // none
        {"\nFunc:\n", "Func"},
        {"\nSolve:\n", "Sol"},
        {"\nMin:\n", "Min"},
        {"\nMax:\n", "Max"},
    }};
    const report_kind due = pending_report();
    if (due == report_kind::none)
        return false;
    const report& shown = reports[static_cast<std::size_t>(due)];
    keep_all_variables(); // which the lines of the listing assign
    run_block_listing(shown.header, shown.prefix, run, out, err);
    teardown_solver_binding();
    return true;
}

} // namespace

line_result compile_one_full_line(std::string_view prefix, int& counter, const cursor& line_start,
                                  cursor& expptr, line_runner run, text_str*& out, code_list* code,
                                  text_str*& err) {
    const std::string_view target = peek_assignment_target(expptr, err);
    if (prefix.empty()) // not a line of a block listing, which is a part of a statement
        keep_variables_before(target);
    write_heading_and_echo(prefix, counter, target, line_start, expptr, out);

    work_text answer; // of a special line, or of the output requests
    if (is_special_function(expptr, counter, run, answer.str, err)) {
        append(out, indent, answer.view(), "\n");
        return line_result::special;
    }
    dim_value result;
    const bool compiled = compile_input_line(expptr, result, code, err);
    if (fails_as_interrupted(err) || !compiled) {
        skip_to_line_end(expptr);
        write_message(out, err);
        append(out, "\n");
        return line_result::failed;
    }
    // The lines of a block listing write no report: it would be another block listing.
    if (prefix.empty() && write_pending_report(run, out, err)) {
        append(out, indent, target, "\n");
        skip_to_line_end(expptr);
        return line_result::compiled;
    }
    normalize_dimensions(result);
    if (prefix.empty()) {
        calculator& current = current_calculator();
        current.result = result;
        current.has_result = true;
    }
    if (!serve_requests(result, expptr, answer.str, out, err)) {
        print_value_in_default_units(answer.str, result, err, true);
        if (!str_is_empty(err)) {
            write_message(out, err);
            append(out, "\n");
        }
    }
    append(out, indent, target, answer.view(), "\n\n");
    skip_to_line_end(expptr);
    return line_result::compiled;
}

} // namespace metrify
