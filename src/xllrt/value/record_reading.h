#pragma once

// Records read as numbers, booleans, integers and texts, and what is coerced on the way. All give false, and
// leave the value alone, for a record that cannot be read so.

#include "xllrt/value/host_records.h"

#include <string>

namespace metrify {

/// A number, boolean or integer, or a text that is a number.
bool RecordToNumber(const XLOPER& record, double& value);
bool RecordToNumber(const XLOPER12& record, double& value);

/// A number, boolean or integer, true if it is not 0. Of texts "true" and "false" in any case, and what reads
/// as an integer or a number.
bool RecordToBool(const XLOPER& record, bool& value);
bool RecordToBool(const XLOPER12& record, bool& value);

/// A number between -2147483648.0 and 2147483647.0, cut towards zero; a boolean, an integer; a text that is
/// an integer or such a number.
bool RecordToInt(const XLOPER& record, std::int32_t& value);
bool RecordToInt(const XLOPER12& record, std::int32_t& value);

/// A text, or the text of a number with six decimals, of a boolean, of an integer, or of an error but code 0.
/// The text of a number is cut at 31 characters. Text of the other width is converted with the code page.
bool RecordToText(const XLOPER& record, std::string& text);
bool RecordToText(const XLOPER& record, std::u16string& text);
bool RecordToText(const XLOPER12& record, std::string& text);
bool RecordToText(const XLOPER12& record, std::u16string& text);

} // namespace metrify
