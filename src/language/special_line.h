#pragma once

// Lines that begin with one of the eight keywords. Such a line is special whatever follows the word.

#include "base/cursor.h"
#include "base/text_str.h"
#include "machine/func_block.h"

namespace metrify {

/// If the word at the cursor, case folded, is a keyword: deals with the line, writes its answer to out,
/// counts the line and moves to the line's end. A message is in out and stays in err. Otherwise the cursor
/// stays. The runner lists the lines of a block.
bool is_special_function(cursor& expptr, int& counter, line_runner run, text_str*& out, text_str*& err);

} // namespace metrify
