#include "language/primary.h"

#include "language/expression.h"
#include "language/function_call.h"
#include "machine/evaluator.h"
#include "machine/variables.h"

namespace metrify {

namespace {

constexpr std::string_view unreadable_message = "ERROR: Could not process line.\n";

void push_number(double number, compile_ctx& ctx, text_str*& err) {
    dim_value value;
    value.comp[0] = number;
    run_and_record(OP_PUSH_VALUE, value, ctx, err);
}

// vector := "[" [ expression { "," expression } ] "]", after the opening bracket.
bool read_vector(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    int count = 0;
    cursor p = expptr;
    skip_blanks_and_comments(p);
    bool closed = accept_char(true, ']', p);
    if (closed)
        expptr = p;
    while (!closed) {
        if (!compile_argument(expptr, ctx, err))
            return false;
        ++count;
        skip_blanks_and_comments(expptr);
        closed = accept_char(true, ']', expptr);
        if (!closed && !accept_char(true, ',', expptr)) {
            append(err, unreadable_message);
            return false;
        }
        if (count > 3) {
            append(err, "ERROR: vectors can only have 3 components.\n");
            return false;
        }
    }
    run_and_record(OP_PUSH_VALUE, pack_three_ints(0, 0, count), ctx, err);
    run_and_record(OP_MAKE_VECTOR, ctx, err);
    return true;
}

// indices := [ expression { [ "," ] expression } ] "]", after the opening bracket; this is a call of
// `component`.
bool read_indices(std::string_view name, cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const function_ref component = {function_component, args_expressions};
    return read_argument_list(name, component, ']', 1, expptr, ctx, err);
}

// variable := name [ "[" indices ], at the name.
bool read_variable(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    const std::string_view name = take_name(expptr);
    skip_blanks_and_comments(expptr);
    var_entry* entry = find_var(name);
    if (entry == nullptr) {
        if (str_is_empty(err))
            append(err, "ERROR: '", name, "' undefined.\n");
        return false;
    }
    // An enclosing parenthesis may have reported an error already.
    if (!str_is_empty(err))
        return false;
    run_and_record(OP_PUSH_VAR, *entry, ctx, err);
    if (!accept_char(true, '[', expptr))
        return true;
    if (entry->value.kind == 0) {
        // The message has no closing quote.
        append(err, "ERROR:  Cannot take a component of '", name, " -- it is not a vector.\n");
        return false;
    }
    return read_indices(name, expptr, ctx, err);
}

// The end of "(" expression ")", after the expression.
bool read_closing_parenthesis(cursor& expptr, text_str*& err) {
    skip_blanks_and_comments(expptr);
    if (accept_char(true, ')', expptr))
        return true;
    append(err, "ERROR: Missing closing parenthesis.\n");
    return false;
}

bool handle_negate_flag(bool flag, compile_ctx& ctx, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    return !flag || run_and_record(OP_NEGATE, ctx, err);
}

// A primary after its sign. is_value is false if there is none.
bool read_signed_operand(cursor& expptr, compile_ctx& ctx, text_str*& err, bool& is_value) {
    is_value = true;
    if (accept_char(true, '[', expptr))
        return read_vector(expptr, ctx, err);
    // After an unreadable expression the cursor is after the parenthesis, and a name is tried there.
    if (accept_char(true, '(', expptr) && compile_rhs(expptr, ctx, err))
        return read_closing_parenthesis(expptr, err);
    function_ref function;
    const cursor name_start = expptr;
    if (lookup_function(expptr, function))
        return read_function_call(text_span(name_start, expptr), function, expptr, ctx, err);
    if (is_mnemonic(false, expptr))
        return read_variable(expptr, ctx, err);
    is_value = false;
    return true;
}

} // namespace

bool compile_argument(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (compile_rhs(expptr, ctx, err))
        return true;
    if (str_is_empty(err))
        append(err, unreadable_message);
    return false;
}

// primary := number | [ sign ] ( vector | "(" expression ")" | call | variable ) | nothing
bool is_num_paren_var_func_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    const cursor start = expptr;
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr))
        return true;
    double number = 0.0;
    if (scan_number(true, expptr, number)) {
        push_number(number, ctx, err);
        return true;
    }
    const bool negate = *expptr == '-';
    if (negate || *expptr == '+') {
        ++expptr.at;
        skip_blanks_and_comments(expptr);
    }
    bool is_value = false;
    const bool is_read = read_signed_operand(expptr, ctx, err, is_value);
    if (is_read && !is_value)
        return true;
    if (is_read && handle_negate_flag(negate, ctx, err))
        return true;
    expptr = start;
    return false;
}

} // namespace metrify
