#include "numerics/special/hyperbolic.h"

#include "numerics/special/polynomial.h"

#include <array>
#include <cmath>

namespace metrify {

namespace {

// The Taylor series are used up to here; beyond, the exponentials don't cancel.
constexpr double series_limit = 1.0;
// From here on e^x is computed as the square of e^(x/2), which overflows no earlier than the result.
constexpr double root_limit = 700.0;

// 1/(2k+1)!, from 1/3! on.
constexpr std::array<double, 9> odd_terms = {
    1.0 / 6.0,          1.0 / 120.0,        1.0 / 5040.0,         1.0 / 362880.0,         1.0 / 39916800.0,
    1.0 / 6227020800.0, 1.0 / 1307674368e3, 1.0 / 355687428096e3, 1.0 / 121645100408832e3};
// 1/(2k)!, from 1/2! on.
constexpr std::array<double, 9> even_terms = {
    1.0 / 2.0,         1.0 / 24.0,          1.0 / 720.0,         1.0 / 40320.0,        1.0 / 3628800.0,
    1.0 / 479001600.0, 1.0 / 87178291200.0, 1.0 / 20922789888e3, 1.0 / 6402373705728e3};

/// sinh(x)/x - 1, by its series.
double sine_rest(double x) {
    return x * x * polynomial(x * x, odd_terms);
}
/// cosh(x) - 1, by its series.
double cosine_rest(double x) {
    return x * x * polynomial(x * x, even_terms);
}

/// Half of e^size.
double half_exponential(double size) {
    if (size < root_limit)
        return 0.5 * std::exp(size);
    const double root = std::exp(0.5 * size);
    return 0.5 * root * root;
}

} // namespace

double hyperbolic_sine(double x) {
    const double size = std::fabs(x);
    if (size <= series_limit)
        return x + x * sine_rest(x);
    const double half = half_exponential(size);
    return std::copysign(half - 0.25 / half, x);
}

double hyperbolic_cosine(double x) {
    const double size = std::fabs(x);
    if (size <= series_limit)
        return 1.0 + cosine_rest(x);
    const double half = half_exponential(size);
    return half + 0.25 / half;
}

double hyperbolic_tangent(double x) {
    const double size = std::fabs(x);
    if (size > series_limit)
        return std::copysign(1.0 - 2.0 / (std::exp(2.0 * size) + 1.0), x);
    const double cosine = cosine_rest(x);
    return x + x * ((sine_rest(x) - cosine) / (1.0 + cosine));
}

} // namespace metrify
