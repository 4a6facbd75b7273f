#pragma once

// The interface between the language and the built-in functions: look-up by name, call by number. The
// functions are implemented in a module that depends on this one.

#include "base/cursor.h"
#include "machine/operand_stack.h"

#include <cstdint>

namespace metrify {

/// How the expression parser reads a function's arguments.
enum arg_mode : std::int32_t {
    args_variable_value = -1, // variable, value, variable, value: func
    args_expressions = 0,
    args_variables = 1, // names of variables: solve, fmin, fmax
};

struct function_ref {
    std::int32_t number = 0; // 1 to 89
    std::int32_t mode = args_expressions;
};

/// The two functions in the grammar: the first has a special syntax, the second implements v[2].
constexpr std::int32_t function_Number = 68;
constexpr std::int32_t function_component = 24;

/// True if a function's name, case folded, is the whole token at the cursor; moves after it.
bool lookup_function(cursor& expptr, function_ref& function);

/// The same after blanks and comments. The cursor moves only if advance is set.
bool is_function_name(bool advance, cursor& expptr);

/// Runs a built-in function, which replaces its count arguments on the stack by exactly one value, even if it
/// fails. Errors are in err.
void call_func_by_number(std::int32_t number, std::int32_t mode, std::int32_t count, compile_ctx& ctx,
                         text_str*& err);

} // namespace metrify
