#pragma once

// Lines that begin with one of the eight keywords, whatever follows the keyword.

#include "base/cursor.h"
#include "base/text_str.h"
#include "machine/func_block.h"

namespace metrify {

/// If the word at the cursor is a keyword in any case: runs the line, writes its answer to out, increments
/// the counter and moves to the line's end. An error message is appended to out and kept in err. Otherwise
/// the cursor is unchanged. `run` writes the listing of the function block.
bool is_special_function(cursor& expptr, int& counter, line_runner run, text_str*& out, text_str*& err);

} // namespace metrify
