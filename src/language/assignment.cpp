#include "language/assignment.h"

#include "language/expression.h"
#include "machine/evaluator.h"
#include "machine/variables.h"

#include <array>

namespace metrify {

namespace {

/// The left side of an assignment.
struct assignment_target {
    std::string_view name;
    int component = 0; // 0 for the whole variable
};

// target := name [ component-suffix ] "="
bool read_target(cursor& expptr, assignment_target& target) {
    skip_blanks_and_comments(expptr);
    if (!is_mnemonic(false, expptr))
        return false;
    target.name = take_name(expptr);
    scan_component_suffix(expptr, target.component);
    skip_blanks_and_comments(expptr);
    return !at_statement_end(expptr) && accept_char(true, '=', expptr);
}

// A complete expression can be followed by an unmatched closing parenthesis or bracket, or by a comma.
bool is_at_end(cursor expptr, text_str*& err) {
    if (at_statement_end(expptr))
        return true;
    const cursor start = expptr;
    skip_to_line_end(expptr);
    append(err, "ERROR: Syntax error -- Unexpected input continuation '", text_span(start, expptr), "'.\n");
    return false;
}

bool component_fits(const assignment_target& target, const dim_value& value, text_str*& err) {
    const var_entry* known = target.component == 0 ? nullptr : find_var(target.name);
    if (known == nullptr || component_units_agree(known->value, target.component, value, 1))
        return true;
    err = str_append_text(
        &err, "ERROR: Incompatible units in component assignment (check previously defined units).\n");
    return false;
}

// Stores the value on top of the stack.
void assign(const assignment_target& target, compile_ctx& ctx, text_str*& err) {
    constexpr std::array<opcode, 4> opcodes = {OP_SETVAR, OP_SETVAR_C1, OP_SETVAR_C2, OP_SETVAR_C3};
    var_entry& entry = find_or_add_var(target.name);
    run_and_record(opcodes[static_cast<std::size_t>(target.component)], entry, ctx, err);
}

// After the "=".
bool compile_assignment(const assignment_target& target, cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!is_varname_okay(target.name, err) || !compile_rhs(expptr, ctx, err) || !is_at_end(expptr, err))
        return false;
    ctx.stack.require(1);
    if (!component_fits(target, ctx.stack.top().value, err))
        return false;
    assign(target, ctx, err);
    return true;
}

bool compile_lhs_and_rhs_and_clear_expptr(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr))
        return true;
    assignment_target target;
    if (read_target(expptr, target)) {
        if (compile_assignment(target, expptr, ctx, err))
            return true;
    } else {
        expptr = start;
        if (compile_rhs(expptr, ctx, err)) {
            if (is_at_end(expptr, err))
                return true;
        } else if (str_is_empty(err)) {
            append(err, "ERROR: Badly formed statement.\n");
        }
    }
    expptr = start;
    return false;
}

} // namespace

std::string_view peek_assignment_target(cursor expptr, text_str*& err) {
    assignment_target target;
    if (!read_target(expptr, target))
        return {};
    const bool is_okay = is_varname_okay(target.name, err);
    str_clear(&err);
    return is_okay ? target.name : std::string_view();
}

bool compile_input_line(cursor& expptr, dim_value& result, code_list* code, text_str*& err) {
    compile_ctx ctx;
    ctx.code = code;
    str_clear(&err);
    dim_clear(result);
    run_and_record(OP_NOP, ctx, err);
    compile_lhs_and_rhs_and_clear_expptr(expptr, ctx, err);
    if (!str_is_empty(err))
        return false;
    run_and_record(OP_POP_RESULT, ctx, err);
    result = ctx.result;
    return true;
}

} // namespace metrify
