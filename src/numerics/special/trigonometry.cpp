#include "numerics/special/trigonometry.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace metrify {

namespace {

// pi/2 in parts of 33 bits, whose multiples up to 2^19 are exact, and the remainder.
constexpr double half_pi[] = {1.57079632673412561417e+00, 6.07710050630396597660e-11,
                              2.02226624871116645580e-21, 8.47842766036889956997e-32};
constexpr double max_quarters = 524288.0;

struct reduced_angle {
    double rest; // within pi/4 of zero
    std::uint32_t quadrant;
};

// The reduction of Cody and Waite: the parts are subtracted one by one, the largest first.
reduced_angle reduce(double quarters, double x) {
    double rest = x;
    for (const double part : half_pi)
        rest -= quarters * part;
    return {rest, static_cast<std::uint32_t>(static_cast<std::int32_t>(quarters)) % 4};
}

double quarters_in(double x) {
    return std::nearbyint(x * (2.0 / std::numbers::pi));
}

// Small angles need no reduction; huge ones, infinities and not-a-numbers can't be reduced.
bool is_reducible(double quarters) {
    return quarters != 0.0 && std::fabs(quarters) <= max_quarters;
}

double sine_in(const reduced_angle& angle) {
    const double size = angle.quadrant % 2 == 0 ? std::sin(angle.rest) : std::cos(angle.rest);
    return angle.quadrant < 2 ? size : -size;
}

} // namespace

double sine(double x) {
    const double quarters = quarters_in(x);
    return is_reducible(quarters) ? sine_in(reduce(quarters, x)) : std::sin(x);
}

double cosine(double x) {
    const double quarters = quarters_in(x);
    if (!is_reducible(quarters))
        return std::cos(x);
    const reduced_angle angle = reduce(quarters, x);
    return sine_in({angle.rest, (angle.quadrant + 1) % 4});
}

double tangent(double x) {
    const double quarters = quarters_in(x);
    if (!is_reducible(quarters))
        return std::tan(x);
    const reduced_angle angle = reduce(quarters, x);
    const double rest = std::tan(angle.rest);
    return angle.quadrant % 2 == 0 ? rest : -1.0 / rest;
}

} // namespace metrify
