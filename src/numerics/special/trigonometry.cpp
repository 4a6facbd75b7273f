#include "numerics/special/trigonometry.h"

#include "numerics/special/angle_reduction.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace metrify {

namespace {

// pi/2 in parts of 33 bits, whose multiples up to 2^19 are exact, and the remainder.
constexpr double half_pi[] = {1.57079632673412561417e+00, 6.07710050630396597660e-11,
                              2.02226624871116645580e-21, 8.47842766036889956997e-32};
constexpr double max_quarters = 524288.0;

// The reduction of Cody and Waite: the parts are subtracted one by one, the largest first.
reduced_angle reduce_small_angle(double quarters, double x) {
    double rest = x;
    for (const double part : half_pi)
        rest -= quarters * part;
    return {rest, static_cast<std::uint32_t>(static_cast<std::int32_t>(quarters)) % 4};
}

/// Angles within pi/4 of zero stay as they are, and so do infinities and not-a-numbers.
reduced_angle reduce(double x) {
    const double quarters = std::nearbyint(x * (2.0 / std::numbers::pi));
    if (quarters == 0.0 || !std::isfinite(x))
        return {x, 0};
    return std::fabs(quarters) <= max_quarters ? reduce_small_angle(quarters, x) : reduce_large_angle(x);
}

double sine_in(const reduced_angle& angle) {
    const double size = angle.quadrant % 2 == 0 ? std::sin(angle.rest) : std::cos(angle.rest);
    return angle.quadrant < 2 ? size : -size;
}

} // namespace

double sine(double x) {
    return sine_in(reduce(x));
}

double cosine(double x) {
    const reduced_angle angle = reduce(x);
    return sine_in({angle.rest, (angle.quadrant + 1) % 4});
}

double tangent(double x) {
    const reduced_angle angle = reduce(x);
    const double rest = std::tan(angle.rest);
    return angle.quadrant % 2 == 0 ? rest : -1.0 / rest;
}

} // namespace metrify
