#include "language/expression.h"

#include "base/nesting.h"
#include "language/expression_diagnosis.h"
#include "language/primary.h"
#include "machine/calculator.h"
#include "machine/operators.h"
#include "units/unit_expression.h"

namespace metrify {

namespace {

// Argument and index lists are read until no expression follows, and an expression may be empty. The guard
// ends such a loop: only so many calls may start at one position.
constexpr int no_progress_limit = 11;

bool makes_progress(const cursor& expptr, text_str*& err) {
    progress_guard& guard = current_calculator().progress;
    if (guard.count >= no_progress_limit) {
        err = str_append_text(
            &err, "ERROR: Cannot parse line -- check nesting of parentheses, brackets, and commas.\n");
        return false;
    }
    if (expptr.at != guard.position)
        guard = {0, expptr.at};
    else
        ++guard.count;
    return true;
}

bool is_plus(cursor& expptr, compile_ctx& ctx, text_str*& err);
bool is_mult(cursor& expptr, compile_ctx& ctx, text_str*& err);

// Reports a binary operator without a right operand.
bool is_incomplete(cursor after_operator, text_str*& err) {
    skip_blanks_and_comments(after_operator);
    if (!at_statement_end(after_operator))
        return false;
    err = str_append_text(&err, "ERROR: Math expression incomplete.\n");
    return true;
}

// Executes an operator on the stack and records its instruction.
bool carry_out(void (*action)(compile_ctx&, text_str*&), opcode code, compile_ctx& ctx, text_str*& err) {
    action(ctx, err);
    if (!str_is_empty(err))
        return false;
    emit_node(code, ctx);
    return true;
}

enum class rest { goes_on, ends, fails };

// An optional unit expression after a primary. It may begin with "*" or "/". Text that is only partly a unit
// expression counts as none and is no error.
rest take_units(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    unit_scale scale;
    if (!parse_unit_expression(expptr, scale, err)) {
        expptr = start;
        return rest::ends;
    }
    if (!str_is_empty(err)) {
        expptr = start;
        if (is_nesting_error(err))
            return rest::fails;
        str_clear(&err);
        return rest::ends;
    }
    emit_node(OP_PUSH_UNIT, ctx, scale);
    assign_unit(scale, ctx, err);
    if (str_is_empty(err)) {
        emit_node(OP_UNIT_ASSIGN, ctx);
        return rest::goes_on;
    }
    if (str_view(err) == unit_assignment_message) {
        str_clear(&err);
        str_append_three(&err, "ERROR: Units assignment '", text_span(start, expptr),
                         "' requires dimensionless value before it.\n");
    }
    return rest::fails;
}

// An optional "^" primary.
rest take_power(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '^', expptr)) {
        expptr = start;
        return rest::ends;
    }
    if (!is_incomplete(expptr, err)) {
        if (!is_num_paren_var_func_or_null(expptr, ctx, err))
            return rest::ends;
        if (str_is_empty(err) && carry_out(stck_exponentiate, OP_POW, ctx, err))
            return rest::goes_on;
    }
    expptr = start;
    return rest::fails;
}

// { unit-expression | "^" primary } after a primary. Units and powers have the same precedence: 2^3 ft is 8
// ft.
bool is_unit_exp_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    for (;;) {
        if (!str_is_empty(err))
            return false;
        cursor next = expptr;
        skip_blanks_and_comments(next);
        if (at_statement_end(next)) {
            expptr = next;
            return true;
        }
        rest result = take_units(expptr, ctx, err);
        if (result == rest::ends)
            result = take_power(expptr, ctx, err);
        if (result != rest::goes_on)
            return result == rest::ends;
    }
}

// factor := primary { unit-expression | "^" primary }
bool is_mult(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    const cursor start = expptr;
    if (is_num_paren_var_func_or_null(expptr, ctx, err) && is_unit_exp_or_null(expptr, ctx, err) &&
        str_is_empty(err))
        return true;
    expptr = start;
    return false;
}

// { ( "*" | "/" ) factor } after a factor. A "*" or "/" without a factor after it is left to the caller.
bool is_more_mult_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    for (;;) {
        if (!str_is_empty(err))
            return false;
        const cursor start = expptr;
        skip_blanks_and_comments(expptr);
        if (at_statement_end(expptr))
            return true;
        const bool multiply = *expptr == '*';
        if (!multiply && *expptr != '/') {
            expptr = start;
            return true;
        }
        ++expptr.at;
        if (is_incomplete(expptr, err)) {
            expptr = start;
            return false;
        }
        if (!is_mult(expptr, ctx, err)) {
            expptr = start;
            return true;
        }
        if (!carry_out(multiply ? stck_multiply : stck_divide, multiply ? OP_MUL : OP_DIV, ctx, err)) {
            expptr = start;
            return false;
        }
    }
}

// term := factor { ( "*" | "/" ) factor }
bool is_plus(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    const cursor start = expptr;
    if (is_mult(expptr, ctx, err) && is_more_mult_or_null(expptr, ctx, err) && str_is_empty(err))
        return true;
    expptr = start;
    return false;
}

// { ( "+" | "-" ) term } after a term. Text that cannot follow an expression is reported.
bool is_more_plus_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    for (;;) {
        if (!str_is_empty(err))
            return false;
        const cursor start = expptr;
        skip_blanks_and_comments(expptr);
        if (at_statement_end(expptr))
            return true;
        const char next = *expptr;
        if (next == '+' || next == '-') {
            ++expptr.at;
            if (!is_incomplete(expptr, err) && is_plus(expptr, ctx, err)) {
                const bool add = next == '+';
                if (carry_out(add ? stck_add : stck_subtract, add ? OP_ADD : OP_SUB, ctx, err))
                    continue;
            }
            expptr = start;
        } else if (next == ')' || next == ',' || next == ']') {
            expptr = start;
            return true;
        }
        if (str_is_empty(err))
            diagnose_rest_of_expression(expptr, err);
        expptr = start;
        return false;
    }
}

} // namespace

void reset_expression_state() {
    current_calculator().progress = {};
}

bool compile_rhs(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!str_is_empty(err) || !makes_progress(expptr, err))
        return false;
    const nesting_level level(ctx.nesting);
    if (level.is_too_deep()) {
        report_nesting(err);
        return false;
    }
    const cursor start = expptr;
    if (is_plus(expptr, ctx, err) && is_more_plus_or_null(expptr, ctx, err) && str_is_empty(err))
        return true;
    expptr = start;
    return false;
}

} // namespace metrify
