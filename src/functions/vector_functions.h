#pragma once

// The functions of vectors, their components and their units, and the interpolation between two points. The
// sentinel is no special case here: it goes into the formulas as it is.

#include "functions/builtin.h"

#include <cmath>

namespace metrify {

/// The exponents of a product.
exponents product_units(const dim_value& a, const dim_value& b);
double dot_product(const dim_value& a, const dim_value& b);
dim_value cross_product(const dim_value& a, const dim_value& b);
double magnitude(const dim_value& v);

/// The arc tangent, not the arc cosine, of the cosine between two vectors; a plain 0 if one has no length.
dim_value angle_between(const dim_value& a, const dim_value& b);

/// The vector of two components with radius r at an angle in radians.
dim_value polar_vector(const dim_value& r, double angle);

/// The value at x on the line through two points given as x1, y1, x2, y2, x, in the units of y1.
dim_value interpolated(arguments a);

/// A component's number as a function is given it, truncated.
inline std::int32_t component_number(const dim_value& index) {
    return truncate_to_int32(index.comp[0]);
}

constexpr argument_test refuses_scalars = {any_scalar, {"Computing ", " with scalars"}};

// clang-format off
inline constexpr value_function vector_functions[] = {
    // name, number of arguments
    //   what is refused, in this order, and what is said
    //   result
    {"dot", 2,
        {refuses_scalars},
        [](arguments a) { return scalar_value(dot_product(a[0], a[1]), product_units(a[0], a[1])); }},
    {"cross", 2,
        {refuses_scalars},
        [](arguments a) { return cross_product(a[0], a[1]); }},
    {"mag", 1,
        {refuses_scalars},
        [](arguments a) { return scalar_value(magnitude(a[0]), a[0].dim); }},
    {"component", 2,
        {{{[](arguments a) { return a[0].kind == 0; }, {"Computing ", " with a scalar"}},
          {[](arguments a) { return a[1].kind != 0; }, {"Computing ", " index cant be a vector"}},
          {[](arguments a) { return !is_dimensionless(a[1]); }, {"Computing ", " second arg has units"}},
          {[](arguments a) { return component_number(a[1]) < 1 || component_number(a[1]) > 3; },
           {"Bad index in ", ""}}}},
        [](arguments a) {
            return scalar_value(a[0].comp[static_cast<std::size_t>(component_number(a[1])) - 1], a[0].dim);
        }},
    {"angle", 2,
        {refuses_scalars,
         {[](arguments a) { return !units_agree_or_zero(a[0], a[1]); },
          {"Computing ", " with args of diff dimensions"}}},
        [](arguments a) { return angle_between(a[0], a[1]); }},
    {"PolarVec", 2,
        {{{any_vector, {"Computing ", " with vector"}},
          {[](arguments a) { return !is_plain_radian(a[1]); }, {"", " second arg must be an angle"}}}},
        [](arguments a) { return polar_vector(a[0], a[1].comp[0]); }},
    {"PolarAngle", 1,
        {refuses_scalars},
        [](arguments a) { return scalar_value(std::atan2(a[0].comp[1], a[0].comp[0]), in_radians); }},
    {"Number", 1, // in the base system; a vector stays a vector
        {},
        [](arguments a) { return dim_value{a[0].kind, a[0].comp, {}}; }},
    {"LinInterp", 5, // x1, y1, x2, y2, x
        {{{any_vector, {"Computing ", " with a vector argument"}},
          {[](arguments a) { return !(units_agree_or_zero(a[4], a[0]) && units_agree_or_zero(a[0], a[2])); },
           {"Computing ", " with X args of diff dimensions"}},
          {[](arguments a) { return !units_agree_or_zero(a[1], a[3]); },
           {"Computing ", " with Y args of diff dimensions"}},
          {[](arguments a) { return std::fabs(a[2].comp[0] - a[0].comp[0]) < 1e-10; },
           {"", " X1 and x2 must have diff values"}}}},
        interpolated},
};
// clang-format on

} // namespace metrify
