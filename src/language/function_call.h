#pragma once

// The syntax of calls: a function's name with its arguments in parentheses.

#include "base/cursor.h"
#include "machine/function_dispatch.h"
#include "machine/operand_stack.h"

#include <string_view>

namespace metrify {

/// A call, behind the function's name as typed. On failure the caller restores the cursor.
bool read_function_call(std::string_view name, const function_ref& function, cursor& expptr, compile_ctx& ctx,
                        text_str*& err);

/// Arguments up to the closing character, behind the opening one, and the call with them and those that are
/// on the stack already. The commas between arguments are optional.
bool read_argument_list(std::string_view name, const function_ref& function, char closing, int on_stack,
                        cursor& expptr, compile_ctx& ctx, text_str*& err);

} // namespace metrify
