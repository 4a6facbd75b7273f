#pragma once

// A statement without its output requests.
//
//   statement := [ name [ component-suffix ] "=" ] expression | nothing
//
// Compiling and evaluating are one pass: when a statement has been compiled its assignments are done. The
// instruction list serves the function block, where it is replayed without any parsing.

#include "base/cursor.h"
#include "machine/code_list.h"
#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// The name that the statement at the cursor assigns, if it is one that a variable may have; empty otherwise.
std::string_view peek_assignment_target(cursor expptr, text_str*& err);

/// Compiles and runs the statement at the cursor. On success result holds its value, and code, unless null,
/// its instructions. Otherwise the message is in err and result is cleared.
bool compile_input_line(cursor& expptr, dim_value& result, code_list* code, text_str*& err);

} // namespace metrify
