#pragma once

// Numbers as text, in both directions, the same on every platform and in every locale.

#include <string_view>

namespace metrify {

/// Room for whatever one number comes to.
struct number_buffer {
    char text[32];
};

/// x as "%g" prints it in the C locale, with six significant digits and at least two digits of exponent.
/// A not-a-number is `nan`, without a sign. The view points into the buffer.
std::string_view format_double(double x, number_buffer& buffer);
std::string_view format_int(int n, number_buffer& buffer);

/// Reads the decimal forms of strtod at the start of a terminated text: a sign, digits with an optional
/// point, an optional exponent. Hexadecimal numbers and the words for infinity and not-a-number are no
/// numbers. Too large a number is an infinity, too small a one zero. Gives the end of the number, or text
/// itself and a value of 0 if there is none. Does not skip blanks.
const char* read_double(const char* text, double& value);

} // namespace metrify
