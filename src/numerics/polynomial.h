#pragma once

// Polynomials by Horner's rule, and the choices between two numbers as the routines here mean them.

#include <array>
#include <cmath>
#include <cstddef>

namespace metrify {

/// c[0] + c[1] y + c[2] y^2 + ...
template <std::size_t count>
constexpr double polynomial(double y, const std::array<double, count>& c) {
    double sum = c[count - 1];
    for (std::size_t i = count - 1; i > 0; --i)
        sum = c[i - 1] + y * sum;
    return sum;
}

/// The smaller number; the second if they can't be compared.
constexpr double smaller(double a, double b) {
    return a < b ? a : b;
}
/// The larger number; the second if they can't be compared.
constexpr double larger(double a, double b) {
    return a > b ? a : b;
}
constexpr double square(double x) {
    return x * x;
}

} // namespace metrify
