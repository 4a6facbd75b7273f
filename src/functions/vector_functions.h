#pragma once

// The functions of vectors, their components and their units, and the interpolation between two points. The
// sentinel is no special case here: the formulas compute with it.

#include "functions/builtin.h"

#include <cmath>

namespace metrify {

/// The exponents of a product.
exponents product_units(const dim_value& a, const dim_value& b);
double dot_product(const dim_value& a, const dim_value& b);
dim_value cross_product(const dim_value& a, const dim_value& b);
double magnitude(const dim_value& v);

/// Intentional: the arc tangent, not the arc cosine, of the cosine of the angle between two vectors. A plain
/// 0 if one has no length.
dim_value angle_between(const dim_value& a, const dim_value& b);

/// The vector of two components with radius r at an angle in radians.
dim_value polar_vector(const dim_value& r, double angle);

/// The value at x on the line through two points given as x1, y1, x2, y2, x, in the units of y1.
dim_value interpolated(arguments a);

/// The number of a component: the argument, truncated.
inline std::int32_t component_number(const dim_value& index) {
    return truncate_to_int32(index.comp[0]);
}

constexpr argument_test refuses_scalars = {any_scalar, {"Computing ", " with scalars"}};

// clang-format off
inline constexpr value_function vector_functions[] = {
    // the facts
    //   what is refused, in this order, and the message
    //   result
    {{33, family::vectors, "dot", 2, "a, b", "The scalar product",
      "two vectors", "the product of their units", help::no_limits, "dot([1, 2, 3], [4, 5, 6])", "= 32"},
     {refuses_scalars},
     [](arguments a) { return scalar_value(dot_product(a[0], a[1]), product_units(a[0], a[1])); }},
    {{29, family::vectors, "cross", 2, "a, b", "The vector product",
      "two vectors", "a vector, of the product of their units", help::no_limits, "cross([1, 2, 3], [4, 5, 7])", "= [ -1 , 5 , -3 ]"},
     {refuses_scalars},
     [](arguments a) { return cross_product(a[0], a[1]); }},
    {{64, family::vectors, "mag", 1, "v", "The length of a vector",
      "a vector", "its units", help::no_limits, "mag([3 m, 4 m])", "= 5 m"},
     {refuses_scalars},
     [](arguments a) { return scalar_value(magnitude(a[0]), a[0].dim); }},
    {{7, family::vectors, "angle", 2, "a, b", "The arc tangent of the cosine of the angle between two vectors",
      "two vectors of the same units", help::radians, help::no_limits, "angle([1, 0], [1, 0]); deg", "= 45 deg"},
     {refuses_scalars,
      {[](arguments a) { return !units_agree_or_zero(a[0], a[1]); },
       {"Computing ", " with args of diff dimensions"}}},
     [](arguments a) { return angle_between(a[0], a[1]); }},
    {{24, family::vectors, "component", 2, "v, i", "A component of a vector",
      "a vector; a number", "the vector's units", "i is 1, 2 or 3", "component([1 m, 2 m, 3 m], 2)", "= 2 m"},
     {{{[](arguments a) { return a[0].kind == 0; }, {"Computing ", " with a scalar"}},
       {[](arguments a) { return a[1].kind != 0; }, {"Computing ", " index cant be a vector"}},
       {[](arguments a) { return !is_dimensionless(a[1]); }, {"Computing ", " second arg has units"}},
       {[](arguments a) { return component_number(a[1]) < 1 || component_number(a[1]) > 3; },
        {"Bad index in ", ""}}}},
     [](arguments a) {
         return scalar_value(a[0].comp[static_cast<std::size_t>(component_number(a[1])) - 1], a[0].dim);
     }},
    {{72, family::vectors, "PolarVec", 2, "r, a", "The vector of length r at an angle a",
      "a quantity; an angle", "a vector, of the units of r", help::no_limits, "PolarVec(2 m, 0 rad)", "= [ 2 , 0 , 0 ] m"},
     {{{any_vector, {"Computing ", " with vector"}},
       {[](arguments a) { return !is_plain_radian(a[1]); }, {"", " second arg must be an angle"}}}},
     [](arguments a) { return polar_vector(a[0], a[1].comp[0]); }},
    {{71, family::vectors, "PolarAngle", 1, "v", "The angle of a vector in the plane of its first two components",
      "a vector", help::radians, help::no_limits, "PolarAngle([1 m, 1 m]); deg", "= 45 deg"},
     {refuses_scalars},
     [](arguments a) { return scalar_value(std::atan2(a[0].comp[1], a[0].comp[0]), in_radians); }},
    // in the base system; a vector stays a vector
    {{68, family::units, "Number", 1, "x, u", "The number that x is in the units u, or in the base system",
      "any quantity; units, which may be left out", help::number, "u fits x", "Number(1 ft, in)", "= 12"},
     {},
     [](arguments a) { return dim_value{a[0].kind, a[0].comp, {}}; }},
    // x1, y1, x2, y2, x
    {{59, family::units, "lininterp", 5, "x1, y1, x2, y2, x", "The value at x on the line through two points",
      "three x of the same units, two y of the same units", "the units of y", "x1 and x2 differ", "lininterp(0, 0, 10, 100, 5)", "= 50", {.name_in_count = "LinInterp", .name_in_refusals = "LinInterp"}},
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
