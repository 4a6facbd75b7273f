#pragma once

// The operands of an expression: numbers, vectors, parentheses, variables and calls.

#include "base/cursor.h"
#include "machine/operand_stack.h"

namespace metrify {

/// Reads a primary and pushes its value. Succeeds on nothing too, with nothing pushed; a sign ahead of
/// nothing is lost.
bool is_num_paren_var_func_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err);

/// Reads what has to be an expression inside a bracket or an argument list.
bool compile_argument(cursor& expptr, compile_ctx& ctx, text_str*& err);

} // namespace metrify
