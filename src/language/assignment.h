#pragma once

// A statement without its output requests.
//
//   statement := [ name [ component-suffix ] "=" ] expression | nothing
//
// Compilation and evaluation are one pass: after compilation the assignment is done. The recorded
// instructions are for the function block, which is replayed without parsing.

#include "base/cursor.h"
#include "machine/code_list.h"
#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// The variable that the statement at the cursor assigns; empty if there is none or its name is not allowed.
std::string_view peek_assignment_target(cursor expptr, text_str*& err);

/// Compiles and runs the statement at the cursor. On success sets result to its value and appends its
/// instructions to code unless that is null. On failure the message is in err and result is cleared.
bool compile_input_line(cursor& expptr, dim_value& result, code_list* code, text_str*& err);

} // namespace metrify
