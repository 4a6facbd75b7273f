#pragma once

// Reads records as numbers, booleans, integers and texts, with conversion. All return false, with the value
// unchanged, for a record that cannot be converted.

#include "xllrt/value/host_records.h"

#include <string>

namespace metrify {

/// A number, boolean or integer, or a text that is a number.
bool RecordToNumber(const XLOPER& record, double& value);
bool RecordToNumber(const XLOPER12& record, double& value);

/// A number, boolean or integer, true if it is not 0. A text that is "true" or "false" in any case, an
/// integer or a number.
bool RecordToBool(const XLOPER& record, bool& value);
bool RecordToBool(const XLOPER12& record, bool& value);

/// A number between -2147483648.0 and 2147483647.0, truncated towards zero; a boolean, an integer; a text
/// that is an integer or such a number.
bool RecordToInt(const XLOPER& record, std::int32_t& value);
bool RecordToInt(const XLOPER12& record, std::int32_t& value);

/// A text, or the text of a number with six decimals, of a boolean, of an integer, or of an error other than
/// code 0. The text of a number is cut at 31 characters. Text of the other width is converted with the code
/// page.
bool RecordToText(const XLOPER& record, std::string& text);
bool RecordToText(const XLOPER& record, std::u16string& text);
bool RecordToText(const XLOPER12& record, std::string& text);
bool RecordToText(const XLOPER12& record, std::u16string& text);

} // namespace metrify
