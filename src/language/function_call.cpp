#include "language/function_call.h"

#include "language/primary.h"
#include "machine/evaluator.h"
#include "machine/variables.h"
#include "units/unit_expression.h"

namespace metrify {

namespace {

void append_about_function(text_str*& err, std::string_view name, std::string_view ending) {
    append(err, "ERROR: Function '", name, ending);
}

void replace(text_str*& err, std::string_view text) {
    str_clear(&err);
    append(err, text);
}

// The instruction pops the function's number, the mode and the count of arguments from the stack.
void call(const function_ref& function, int count, compile_ctx& ctx, text_str*& err) {
    run_and_record(OP_PUSH_VALUE, pack_three_ints(function.number, function.mode, count), ctx, err);
    run_and_record(OP_CALL_FUNC, ctx, err);
}

// reference := name [ component-suffix ]: pushes the variable's number and component. The function handles an
// unknown variable.
bool read_variable_reference(std::string_view function, cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!is_mnemonic(false, expptr)) {
        append_about_function(err, function, "' requires variable name arguments.\n");
        return false;
    }
    const std::string_view name = take_name(expptr);
    int component = 0;
    scan_component_suffix(expptr, component);
    const auto number = static_cast<std::int32_t>(varnum_by_name(name, err));
    run_and_record(OP_PUSH_VALUE, pack_two_ints(number, component), ctx, err);
    return true;
}

// variable "," expression
bool read_variable_and_value(std::string_view function, cursor& expptr, compile_ctx& ctx, text_str*& err) {
    if (!read_variable_reference(function, expptr, ctx, err))
        return false;
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, ',', expptr)) {
        append(err, "ERROR: Function arg for '", function,
               "' must alternate variable, value, variable, value, etc.\n");
        return false;
    }
    return compile_argument(expptr, ctx, err);
}

bool read_argument(std::string_view name, std::int32_t mode, cursor& expptr, compile_ctx& ctx,
                   text_str*& err) {
    switch (mode) {
    case args_variables:
        return read_variable_reference(name, expptr, ctx, err);
    case args_variable_value:
        return read_variable_and_value(name, expptr, ctx, err);
    default:
        return compile_argument(expptr, ctx, err);
    }
}

// units := unit-expression ")", after the comma: converts the value below to a plain number in that unit.
bool read_number_units(cursor& expptr, compile_ctx& ctx, text_str*& err) {
    unit_scale scale;
    if (!parse_unit_expression(expptr, scale, err)) {
        replace(err, "ERROR: Second argument to Number() must be a units expression.\n");
        return false;
    }
    if (!str_is_empty(err)) {
        replace(err, "ERROR: Second argument to Number() must be a units expression. (1)\n");
        return false;
    }
    run_and_record(OP_PUSH_UNIT, scale, ctx, err);
    if (!run_and_record(OP_REQUEST_UNITS, ctx, err)) {
        replace(err, "ERROR: Second argument to Number() is incompatible.\n");
        return false;
    }
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, ')', expptr)) {
        replace(err, "ERROR: Number() cannot have more than two arguments.\n");
        return false;
    }
    return true;
}

// Number "(" expression [ "," unit-expression ] ")"
// The second argument is no value, so this function has a special syntax. The closing parenthesis after a
// single argument is optional.
bool read_Number_call(std::string_view name, const function_ref& function, cursor& expptr, compile_ctx& ctx,
                      text_str*& err) {
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '(', expptr)) {
        append_about_function(err, name, "' must be followed by parenthesis.\n");
        return false;
    }
    skip_blanks_and_comments(expptr);
    if (*expptr == ')') {
        append(err, "ERROR: Function ", name, " requires one or two arguments, not zero.\n");
        return false;
    }
    if (!compile_argument(expptr, ctx, err))
        return false;
    skip_blanks_and_comments(expptr);
    const bool closed = accept_char(true, ')', expptr);
    skip_blanks_and_comments(expptr);
    if (!closed && accept_char(true, ',', expptr) && !read_number_units(expptr, ctx, err))
        return false;
    call(function, 1, ctx, err);
    return true;
}

} // namespace

// call := function "(" { argument [ "," ] } ")"
bool read_function_call(std::string_view name, const function_ref& function, cursor& expptr, compile_ctx& ctx,
                        text_str*& err) {
    if (function.number == function_Number)
        return read_Number_call(name, function, expptr, ctx, err);
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '(', expptr)) {
        append_about_function(err, name, "' must be followed by parentheses.\n");
        return false;
    }
    return read_argument_list(name, function, ')', 0, expptr, ctx, err);
}

bool read_argument_list(std::string_view name, const function_ref& function, char closing, int on_stack,
                        cursor& expptr, compile_ctx& ctx, text_str*& err) {
    int count = on_stack;
    for (;;) {
        skip_blanks_and_comments(expptr);
        if (accept_char(true, closing, expptr))
            break;
        if (!read_argument(name, function.mode, expptr, ctx, err))
            return false;
        count += function.mode == args_variable_value ? 2 : 1;
        skip_blanks_and_comments(expptr);
        if (accept_char(true, closing, expptr))
            break;
        accept_char(true, ',', expptr);
        if (at_statement_end(expptr)) {
            append(err, "ERROR: Argument list for function '", name, "' not correctly finished.\n");
            return false;
        }
    }
    call(function, count, ctx, err);
    return true;
}

} // namespace metrify
