#pragma once

// The syntax of calls: a function's name with its arguments in parentheses.

#include "base/cursor.h"
#include "machine/function_dispatch.h"
#include "machine/operand_stack.h"

#include <string_view>

namespace metrify {

/// Reads a call from after the function's name, which is passed as typed. On failure the caller restores the
/// cursor.
bool read_function_call(std::string_view name, const function_ref& function, cursor& expptr, compile_ctx& ctx,
                        text_str*& err);

/// Reads arguments from after the opening character to the closing one, and calls the function with them and
/// the `on_stack` arguments pushed before. The commas between arguments are optional.
bool read_argument_list(std::string_view name, const function_ref& function, char closing, int on_stack,
                        cursor& expptr, compile_ctx& ctx, text_str*& err);

} // namespace metrify
