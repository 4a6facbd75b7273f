#include "units/unit_system.h"

#include "base/failure.h"
#include "units/default_system.h"
#include "units/unit_expression.h"
#include "units/unit_state.h"

#include <array>
#include <string_view>
#include <utility>

namespace metrify {

namespace {

unit_system_state& system_state() {
    return current_unit_state().system;
}

// Reads the texts with the current units: a user unit in one may have been redefined.
void read_exponents(unit_system_state& state) {
    if (state.user_units_read == user_unit_generation())
        return;
    state.user_units_read = user_unit_generation();
    work_text dropped;
    for (unit_exception& exception : state.exceptions) {
        cursor p(exception.text.c_str());
        unit_scale scale;
        exception.is_unit = parse_unit_expression(p, scale, dropped.str);
        exception.dim = scale.dim;
    }
}

} // namespace

void reset_unit_state() {
    unit_system_state& state = system_state();
    state.current = system_MKS;
    state.exceptions.clear();
}

void set_unit_system(unit_system system) {
    system_state().current = system;
}

unit_system current_unit_system() {
    return system_state().current;
}

int exception_count() {
    return static_cast<int>(system_state().exceptions.size());
}

const std::string* matching_exception(const exponents& dim) {
    unit_system_state& state = system_state();
    if (state.exceptions.empty())
        return nullptr;
    read_exponents(state);
    for (const unit_exception& exception : state.exceptions)
        if (exception.is_unit && same_units_strict(exception.dim, dim))
            return &exception.text;
    return nullptr;
}

// list := "(" { unit-expression | "," } ")"
// The text of an item includes a blank after the comma.
void read_exceptions(cursor& expptr, text_str*& err) {
    str_clear(&err);
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '(', expptr))
        return;
    skip_blanks_and_comments(expptr);
    std::vector<unit_exception> read;
    cursor start = expptr;
    for (;;) {
        skip_blanks_and_comments(expptr);
        if (accept_char(true, ')', expptr))
            break;
        if (accept_char(true, ',', expptr)) {
            start = expptr;
            continue;
        }
        if (at_line_end(expptr)) {
            replace_message(err, " Argument list not terminated");
            return;
        }
        const cursor item = expptr;
        unit_scale scale;
        if (!parse_unit_expression(expptr, scale, err) || expptr == item) {
            replace_message(err, " Argument not a proper unit");
            return;
        }
        read.push_back({std::string(text_span(start, expptr)), {}, false});
        start = expptr;
    }
    if (read.empty())
        return;
    unit_system_state& state = system_state();
    state.exceptions = std::move(read);
    state.user_units_read = user_unit_generation() - 1;
}

void run_system_statement(unit_system system, cursor& expptr, text_str*& out, text_str*& err) {
    const default_system& row = default_systems[system];
    set_unit_system(system);
    read_exceptions(expptr, err);
    if (!str_is_empty(err)) {
        append(out, err);
        append(out, "\n");
    }
    const bool is_singular = row.has_singular && exception_count() == 1;
    append(out, " Default units = ", row.name, " with ", exception_count(),
           is_singular ? " exception.\n" : " exceptions.\n");
}

} // namespace metrify
