#pragma once

// Lines that begin with one of the eight keywords. Such a line is special whatever follows the word.

#include "base/cursor.h"
#include "base/text_str.h"

namespace metrify {

/// If the word at the cursor, case folded, is a keyword: deals with the line, writes its answer to out,
/// counts the line and moves to the line's end. A message is in out and stays in err. Otherwise the cursor
/// stays.
bool is_special_function(cursor& expptr, int& counter, text_str*& out, text_str*& err);

} // namespace metrify
