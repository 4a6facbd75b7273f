#pragma once

// The operands of an expression: numbers, vectors, parenthesised expressions, variables and calls.

#include "base/cursor.h"
#include "machine/operand_stack.h"

namespace metrify {

/// Reads a primary and pushes its value. If there is none, succeeds and pushes nothing; a sign without a
/// primary is skipped.
bool is_num_paren_var_func_or_null(cursor& expptr, compile_ctx& ctx, text_str*& err);

/// Reads a mandatory expression inside brackets or an argument list.
bool compile_argument(cursor& expptr, compile_ctx& ctx, text_str*& err);

} // namespace metrify
