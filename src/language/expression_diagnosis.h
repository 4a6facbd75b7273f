#pragma once

// What to say of a text that stands where an expression should have gone on or ended.

#include "base/cursor.h"
#include "base/text_str.h"

namespace metrify {

/// Writes the message for the text at the cursor, behind a complete term: units behind a value that has some,
/// the first name that means nothing, or the text itself.
void diagnose_rest_of_expression(const cursor& expptr, text_str*& err);

/// Reports the first name up to the statement's end that is no function, variable or unit, or that the
/// statement ends here. False, and nothing written, if there is no such name.
bool report_first_undefined(cursor expptr, text_str*& err);

} // namespace metrify
