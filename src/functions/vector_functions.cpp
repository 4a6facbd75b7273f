#include "functions/vector_functions.h"

#include "numerics/special/trigonometry.h"

namespace metrify {

exponents product_units(const dim_value& a, const dim_value& b) {
    exponents sum = a.dim;
    sum += b.dim;
    return sum;
}

double dot_product(const dim_value& a, const dim_value& b) {
    return a.comp[0] * b.comp[0] + a.comp[1] * b.comp[1] + a.comp[2] * b.comp[2];
}

dim_value cross_product(const dim_value& a, const dim_value& b) {
    const auto [ax, ay, az] = a.comp;
    const auto [bx, by, bz] = b.comp;
    return {1, {ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx}, product_units(a, b)};
}

double magnitude(const dim_value& v) {
    return std::sqrt(dot_product(v, v));
}

dim_value angle_between(const dim_value& a, const dim_value& b) {
    const double magnitudes = magnitude(a) * magnitude(b);
    if (!(magnitudes > 0.0))
        return {};
    return scalar_value(std::atan(dot_product(a, b) / magnitudes), in_radians);
}

dim_value polar_vector(const dim_value& r, double angle) {
    return {1, {cosine(angle) * r.comp[0], sine(angle) * r.comp[0], 0.0}, r.dim};
}

dim_value interpolated(arguments a) {
    const double x1 = a[0].comp[0];
    const double y1 = a[1].comp[0];
    const double x2 = a[2].comp[0];
    const double y2 = a[3].comp[0];
    const double x = a[4].comp[0];
    // Everything else is copied from y1, including the components that a scalar doesn't use.
    dim_value result = a[1];
    result.comp[0] = (y2 - y1) * (x - x1) / (x2 - x1) + y1;
    return result;
}

} // namespace metrify
