#pragma once

// Texts of cells read as numbers, the same on every platform and in every locale.
//
// An empty text is no number. Before the number white space may stand, behind it nothing but white space:
// blank, tab, line feed, vertical tab, form feed, carriage return. A text of white space alone is 0.

#include <cstdint>
#include <string_view>

namespace metrify {

/// Reads what strtod reads: decimal and hexadecimal numbers, infinities and not-a-numbers. Gives false for
/// anything else, and for a number that is too large or too small for a double.
bool ParseNumber(std::string_view text, double& value);
bool ParseNumber(std::u16string_view text, double& value);

/// Reads decimal digits with an optional sign. Gives false for anything else, and for what does not fit into
/// 32 bits.
bool ParseInteger(std::string_view text, std::int32_t& value);
bool ParseInteger(std::u16string_view text, std::int32_t& value);

} // namespace metrify
