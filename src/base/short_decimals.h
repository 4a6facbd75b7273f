#pragma once

// The decimal conversions that one multiplication or division computes exactly enough. They cover nearly all
// numbers of a calculation at a fraction of the time; the others are left to the standard library, with which
// the results agree to the last bit.

#include <array>
#include <bit>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace metrify::short_decimals {

/// The powers of ten that are exact in double precision.
constexpr int largest_power = 22;
constexpr std::array<double, largest_power + 1> powers_of_ten = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// x times a power of ten from -22 to 22, rounded once.
constexpr double scaled(double x, int power) {
    return power < 0 ? x / powers_of_ten[static_cast<std::size_t>(-power)]
                     : x * powers_of_ten[static_cast<std::size_t>(power)];
}

/// A number with six significant digits: digits from 100000 to 999999, of which the first has the power of
/// ten.
struct six_digits {
    std::uint32_t digits;
    int power;
};

/// Rounds a positive number to six digits. False if it is out of range, or so close to the middle of two
/// results that the error of the scaling could decide.
inline bool round_to_six_digits(double x, six_digits& result) {
    constexpr double too_close = 1e-6; // the error is below 1e-9
    const int exponent = static_cast<int>(std::bit_cast<std::uint64_t>(x) >> 52U) - 1023;
    if (exponent < -56 || exponent > 89)
        return false;
    // The largest power of ten up to 2^exponent; 1233/4096 is the logarithm of 2. That of x can be the next
    // one.
    int power = (exponent * 1233) >> 12;
    double shifted = scaled(x, 5 - power);
    if (shifted >= 1e6) {
        ++power;
        shifted = scaled(x, 5 - power);
    }
    const auto below = static_cast<std::uint32_t>(shifted);
    const double above_half = shifted - below - 0.5;
    if (above_half < too_close && above_half > -too_close)
        return false;
    const std::uint32_t rounded = above_half > 0.0 ? below + 1 : below;
    result = rounded == 1'000'000 ? six_digits{100'000, power + 1} : six_digits{rounded, power};
    return true;
}

/// The number that the six digits of x are read as: the same as formatting and reading it. False if it has to
/// be done so, for the reasons above.
inline bool keep_six_digits(double x, double& result) {
    six_digits rounded = {};
    if (FLT_EVAL_METHOD != 0 || !round_to_six_digits(x < 0.0 ? -x : x, rounded))
        return false;
    const double magnitude = scaled(rounded.digits, rounded.power - 5);
    result = x < 0.0 ? -magnitude : magnitude;
    return true;
}

/// Writes the digits without trailing zeros as "%g" does and returns the end. Up to 16 characters are
/// written.
inline char* write_six_digits(const six_digits& number, char* out) {
    // Each copy is of a fixed size, the six digits and a few characters that are written over or not used.
    constexpr std::size_t copied = 8;
    std::array<char, 2 * copied> digits = {};
    std::uint32_t left = number.digits;
    for (std::size_t i = 6; i-- > 0; left /= 10)
        digits[i] = static_cast<char>('0' + left % 10);
    std::size_t count = 6;
    while (count > 1 && digits[count - 1] == '0')
        --count;

    const bool is_fixed = number.power >= -4 && number.power < 6;
    if (is_fixed && number.power < 0) {
        std::memcpy(out, "0.000000", copied);
        out += 1 - number.power;
        std::memcpy(out, digits.data(), copied);
        return out + count;
    }
    const std::size_t before_point = is_fixed ? static_cast<std::size_t>(number.power) + 1 : 1;
    std::memcpy(out, digits.data(), copied);
    if (count > before_point) {
        out[before_point] = '.';
        std::memcpy(out + before_point + 1, digits.data() + before_point, copied);
        out += count + 1;
    } else {
        out += before_point;
    }
    if (!is_fixed) {
        const int magnitude = number.power < 0 ? -number.power : number.power;
        *out++ = 'e';
        *out++ = number.power < 0 ? '-' : '+';
        *out++ = static_cast<char>('0' + magnitude / 10);
        *out++ = static_cast<char>('0' + magnitude % 10);
    }
    return out;
}

/// Reads digits with an optional point, which are multiplied by a power of ten. False if there are more than
/// 15 digits, or if the power is out of range: then the result would be rounded twice.
inline bool read_digits(std::string_view text, int power, double& value) {
    if (FLT_EVAL_METHOD != 0 || text.size() > 16)
        return false;
    std::uint64_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '.')
            point = i + 1;
        else
            digits = 10 * digits + static_cast<std::uint64_t>(text[i] - '0');
    power -= static_cast<int>(text.size() - point);
    constexpr std::uint64_t largest = 1'000'000'000'000'000; // exact in double precision
    if (digits > largest || power < -largest_power || power > largest_power)
        return false;
    value = scaled(static_cast<double>(digits), power);
    return true;
}

} // namespace metrify::short_decimals
