#pragma once

// Scalar helpers of the published routines. What they give for a not-a-number is part of the methods, so
// they are not the standard library's.

namespace metrify {

constexpr double square(double x) {
    return x * x;
}

/// The smaller number; the second if they can't be compared.
constexpr double smaller(double a, double b) {
    return a < b ? a : b;
}
/// The larger number; the second if they can't be compared.
constexpr double larger(double a, double b) {
    return a > b ? a : b;
}

/// The magnitude of a with the sign of b; 0 counts as positive, whatever its sign.
constexpr double with_sign_of(double a, double b) {
    const double magnitude = a < 0.0 ? -a : a;
    return b >= 0.0 ? magnitude : -magnitude;
}

} // namespace metrify
