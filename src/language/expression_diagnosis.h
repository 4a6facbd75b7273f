#pragma once

// Error messages for text that can neither continue nor end an expression.

#include "base/cursor.h"
#include "base/text_str.h"

namespace metrify {

/// Reports the text at the cursor, which follows a complete term. It may be units after a value that has
/// units already, or contain an undefined name; otherwise the message quotes the text.
void diagnose_rest_of_expression(const cursor& expptr, text_str*& err);

/// Reports the first name in the rest of the statement that is no function, variable or unit, or that nothing
/// is left of the statement. False if there is nothing to report.
bool report_first_undefined(cursor expptr, text_str*& err);

} // namespace metrify
