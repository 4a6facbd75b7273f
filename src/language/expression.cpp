#include "language/expression.h"

#include "base/failure.h"
#include "base/interruption.h"
#include "base/nesting.h"
#include "language/expression_diagnosis.h"
#include "language/primary.h"
#include "machine/calculator.h"
#include "machine/evaluator.h"
#include "machine/solver_binding.h"
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

using rule = bool (*)(cursor&, compile_ctx&, text_str*&);

// Applies two rules in sequence. Restores the cursor on failure.
bool read_in_sequence(rule first, rule second, cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    if (first(expptr, ctx, err) && second(expptr, ctx, err) && str_is_empty(err))
        return true;
    expptr = start;
    return false;
}

// Reports a binary operator without a right operand.
bool is_incomplete(cursor after_operator, text_str*& err) {
    skip_blanks_and_comments(after_operator);
    if (!at_statement_end(after_operator))
        return false;
    append(err, "ERROR: Math expression incomplete.\n");
    return true;
}

enum class parse_step { continues, ends, fails };

// An optional unit expression after a primary. It may begin with "*" or "/". Text that is only partly a unit
// expression counts as none and is no error.
parse_step take_units(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    unit_scale scale;
    unit_fault fault = unit_fault::none;
    if (!parse_unit_expression(expptr, scale, err, fault)) {
        expptr = start;
        return parse_step::ends;
    }
    if (!str_is_empty(err)) {
        expptr = start;
        if (fault == unit_fault::nesting)
            return parse_step::fails;
        str_clear(&err);
        return parse_step::ends;
    }
    ctx.stack.require(1);
    if (!is_dimensionless(ctx.stack.top().value)) {
        append(err, "ERROR: Units assignment '", text_span(start, expptr),
               "' requires dimensionless value before it.\n");
        return parse_step::fails;
    }
    run_and_record(OP_PUSH_UNIT, scale, ctx, err);
    return run_and_record(OP_UNIT_ASSIGN, ctx, err) ? parse_step::continues : parse_step::fails;
}

// An optional "^" primary.
parse_step take_power(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const cursor start = expptr;
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '^', expptr)) {
        expptr = start;
        return parse_step::ends;
    }
    if (!is_incomplete(expptr, err)) {
        if (!is_num_paren_var_func_or_null(expptr, ctx, err))
            return parse_step::ends;
        if (str_is_empty(err) && run_and_record(OP_POW, ctx, err))
            return parse_step::continues;
    }
    expptr = start;
    return parse_step::fails;
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
        parse_step result = take_units(expptr, ctx, err);
        if (result == parse_step::ends)
            result = take_power(expptr, ctx, err);
        if (result != parse_step::continues)
            return result == parse_step::ends;
    }
}

// factor := primary { unit-expression | "^" primary }
bool is_mult(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    return read_in_sequence(is_num_paren_var_func_or_null, is_unit_exp_or_null, expptr, ctx, err);
}

// { ( "*" | "/" ) factor } after a factor. A "*" or "/" without a factor after it is left to the caller.
bool is_more_mult_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    for (std::int64_t factors = 1;; ++factors) {
        if (is_interrupted_at(factors))
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
        const bool incomplete = is_incomplete(expptr, err);
        if (incomplete || !is_mult(expptr, ctx, err)) {
            expptr = start;
            return !incomplete;
        }
        if (!run_and_record(multiply ? OP_MUL : OP_DIV, ctx, err)) {
            expptr = start;
            return false;
        }
    }
}

// term := factor { ( "*" | "/" ) factor }
bool is_plus(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    return read_in_sequence(is_mult, is_more_mult_or_null, expptr, ctx, err);
}

// { ( "+" | "-" ) term } after a term. Text that cannot follow an expression is reported.
bool is_more_plus_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    for (std::int64_t terms = 1;; ++terms) {
        if (is_interrupted_at(terms))
            return false;
        const cursor start = expptr;
        skip_blanks_and_comments(expptr);
        if (at_statement_end(expptr))
            return true;
        const char next = *expptr;
        if (next == '+' || next == '-') {
            ++expptr.at;
            if (!is_incomplete(expptr, err) && is_plus(expptr, ctx, err)) {
                if (run_and_record(next == '+' ? OP_ADD : OP_SUB, ctx, err))
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
    return read_in_sequence(is_plus, is_more_plus_or_null, expptr, ctx, err);
}

bool fails_as_interrupted(text_str*& err) {
    if (!is_interrupted())
        return false;
    teardown_solver_binding();
    replace_message(err, interruption_message);
    current_calculator().has_reported_interruption = true;
    return true;
}

} // namespace metrify
