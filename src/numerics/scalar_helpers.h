#pragma once

// Scalar helpers of the published routines. Their results for a not-a-number are part of the methods, so
// the standard library's functions don't replace them.

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
