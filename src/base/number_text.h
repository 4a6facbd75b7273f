#pragma once

// Numbers as text, in both directions, the same on every platform and in every locale.

#include <string_view>

namespace metrify {

/// Buffer for the text of one number.
struct number_buffer {
    char text[32];
};

/// x as "%g" prints it in the C locale, with six significant digits and at least two digits of exponent.
/// A not-a-number is `nan`, without a sign. The view points into the buffer.
std::string_view format_double(double x, number_buffer& buffer);
std::string_view format_int(int n, number_buffer& buffer);

/// Reads a decimal number at the start of a null-terminated text: optional sign, digits with an optional
/// point, optional exponent. Hexadecimal numbers and the words for infinity and not-a-number are not
/// accepted. A number that is too large becomes infinity, one that is too small 0. Returns the end of the
/// number; without a number returns text and sets value to 0. Does not skip blanks.
const char* read_double(const char* text, double& value);

} // namespace metrify
