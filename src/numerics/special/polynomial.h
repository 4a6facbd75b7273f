#pragma once

#include <array>
#include <cstddef>

namespace metrify {

/// c[0] + c[1] y + c[2] y^2 + ..., by Horner's rule.
template <std::size_t count>
constexpr double polynomial(double y, const std::array<double, count>& c) {
    double sum = c[count - 1];
    for (std::size_t i = count - 1; i > 0; --i)
        sum = c[i - 1] + y * sum;
    return sum;
}

} // namespace metrify
