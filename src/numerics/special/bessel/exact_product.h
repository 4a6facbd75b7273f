#pragma once

// The rounding error of products, by the splitting of T. J. Dekker (Numer. Math. 18, 1971). A fused
// multiply-add would do the same in one step, but not every runtime library's is exact.

#include <bit>
#include <cstdint>

namespace metrify {

/// The leading 26 binary digits of x: the product of two such numbers is exact, and so is that of one and
/// the remainder of another.
inline double leading_digits(double x) {
    constexpr std::uint64_t digits = ~((std::uint64_t{1} << 27) - 1);
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & digits);
}

/// The exact product of a and b minus the rounded one.
inline double rest_of_product(double a, double b) {
    const double a_main = leading_digits(a);
    const double b_main = leading_digits(b);
    const double a_rest = a - a_main;
    const double b_rest = b - b_main;
    return ((a_main * b_main - a * b) + a_main * b_rest + a_rest * b_main) + a_rest * b_rest;
}

} // namespace metrify
