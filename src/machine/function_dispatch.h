#pragma once

// The narrow place where the language and its built-in functions meet: look a name up, call by number. The
// functions work on the operand stack and know the language; the language knows no function but by its
// number.

#include "base/cursor.h"
#include "machine/operand_stack.h"

#include <cstdint>

namespace metrify {

/// How the expression compiler reads a function's arguments.
enum arg_mode : std::int32_t {
    args_variable_value = -1, // variable, value, variable, value: func
    args_expressions = 0,
    args_variables = 1, // names of variables: solve, fmin, fmax
};

struct function_ref {
    std::int32_t number = 0; // 1 to 89
    std::int32_t mode = args_expressions;
};

/// The two functions that the grammar itself knows: one has a syntax of its own, the other stands behind
/// v[2].
constexpr std::int32_t function_Number = 68;
constexpr std::int32_t function_component = 24;

/// True if a function's name, case folded, is the whole token at the cursor, which then moves behind it.
bool lookup_function(cursor& expptr, function_ref& function);

/// The same behind blanks and comments. The cursor is put back, blanks included, unless advance is set.
bool is_function_name(bool advance, cursor& expptr);

/// Runs a built-in: it replaces its count arguments on the stack by exactly one value, whatever happens. A
/// failure is in err.
void call_func_by_number(std::int32_t number, std::int32_t mode, std::int32_t count, compile_ctx& ctx,
                         text_str*& err);

} // namespace metrify
