#pragma once

// Texts of cells read as numbers, the same on every platform and in every locale.
//
// An empty text is not a number. White space may surround the number: blank, tab, line feed, vertical tab,
// form feed, carriage return. A text of nothing but white space is 0.

#include <cstdint>
#include <string_view>

namespace metrify {

/// Reads what strtod reads: decimal and hexadecimal numbers, infinities and not-a-numbers. False for
/// anything else, and for a number that overflows or becomes 0 by underflow; a subnormal result is a number.
bool ParseNumber(std::string_view text, double& value);
bool ParseNumber(std::u16string_view text, double& value);

/// Reads decimal digits with an optional sign. False for anything else, and for a number that does not fit
/// into 32 bits.
bool ParseInteger(std::string_view text, std::int32_t& value);
bool ParseInteger(std::u16string_view text, std::int32_t& value);

} // namespace metrify
