#pragma once

// The mathematical functions of one or two scalars, a row each. There are no degrees in them: an argument
// stands in the base system, and an angle comes out in radians.

#include "functions/builtin.h"
#include "numerics/special/hyperbolic.h"
#include "numerics/special/trigonometry.h"

#include <cmath>
#include <numbers>

namespace metrify {

/// What a formula's result is.
enum class gives { number, radians };

/// Where a formula doesn't hold, and what is said there. If nothing is said the result is the sentinel.
struct formula_limits {
    bool (*outside)(double x) = nullptr;
    refusal said = {};
};

/// A formula of one dimensionless scalar; angle and amount of substance don't count as dimensions. An
/// argument that is the sentinel gives a plain 0, unless it lies outside and something is said about it.
struct formula_function {
    std::string_view name;
    gives result;
    formula_limits limits;
    double (*formula)(double x);
};
void run_function(const formula_function& function, compile_ctx& ctx, text_str*& err);

// What several formulas have in common.

constexpr double half_turn = std::numbers::pi;
constexpr double quarter_turn = std::numbers::pi / 2.0;

/// 1/divisor, and the sentinel for a divisor that is exactly 0.
inline double one_over(double divisor) {
    return divisor == 0.0 ? infinity_sentinel : 1.0 / divisor;
}
/// The side of a right triangle with the hypotenuse x and another side of 1.
inline double leg(double x) {
    return std::sqrt(x * x - 1.0);
}
/// The angle of that triangle between x and the side of 1.
inline double arc(double x) {
    return std::atan(leg(x));
}
/// -1 below 0, else 1.
inline double side(double x) {
    return x < 0.0 ? -1.0 : 1.0;
}
/// The positive number with the hyperbolic cosine t, for t of at least 1.
inline double cosh_inverse(double t) {
    return std::log(leg(t) + t);
}
inline double sinh_inverse(double t) {
    return std::log(std::sqrt(t * t + 1.0) + t);
}

constexpr formula_limits everywhere = {};
constexpr formula_limits within_one = {[](double x) { return x < -1.0 || x > 1.0; }};
constexpr formula_limits beyond_one = {[](double x) { return !(x <= -1.0 || x >= 1.0); }};
constexpr formula_limits above_zero = {[](double x) { return !(x > 0.0); }};

// The wording differs from one to the next, and that is meant; atanh has no lower limit.
constexpr formula_limits acosh_limits = {[](double x) { return x < 1.0; },
                                         {"Arg to ", " must be greater than one"}};
constexpr formula_limits atanh_limits = {[](double x) { return x > 1.0; },
                                         {"Arg of ", " must be less than one"}};
constexpr formula_limits asech_limits = {[](double x) { return x < 0.0 || x > 1.0; },
                                         {"ARg to ", " must be between zero and one"}};
constexpr formula_limits acoth_limits = {[](double x) { return std::fabs(x) < 1.0; },
                                         {"Arg of ", " must be greater than one"}};

// The formulas stand as they are also where a textbook has others: asec in the second quadrant, acsc of a
// negative number, log for the natural logarithm.
// clang-format off
inline constexpr formula_function formulas[] = {
    // name    result          limits         formula
    {"sin",   gives::number,  everywhere,    [](double x) { return sine(x); }},
    {"cos",   gives::number,  everywhere,    [](double x) { return cosine(x); }},
    {"tan",   gives::number,  everywhere,    [](double x) { return tangent(x); }},
    {"sec",   gives::number,  everywhere,    [](double x) { return one_over(cosine(x)); }},
    {"csc",   gives::number,  everywhere,    [](double x) { return one_over(sine(x)); }},
    {"cot",   gives::number,  everywhere,    [](double x) { return one_over(tangent(x)); }},
    {"asin",  gives::radians, within_one,    [](double x) { return std::asin(x); }},
    {"acos",  gives::radians, within_one,    [](double x) { return std::acos(x); }},
    {"atan",  gives::radians, everywhere,    [](double x) { return std::atan(x); }},
    {"asec",  gives::radians, beyond_one,    [](double x) { return x < 0.0 ? half_turn - arc(x) : arc(x); }},
    {"acsc",  gives::radians, beyond_one,    [](double x) { return side(x) * std::acos(leg(x) / x); }},
    {"acot",  gives::radians, everywhere,    [](double x) { return side(x) * quarter_turn - std::atan(x); }},
    {"sinh",  gives::number,  everywhere,    [](double x) { return hyperbolic_sine(x); }},
    {"cosh",  gives::number,  everywhere,    [](double x) { return hyperbolic_cosine(x); }},
    {"tanh",  gives::number,  everywhere,    [](double x) { return hyperbolic_tangent(x); }},
    {"sech",  gives::number,  everywhere,    [](double x) { return one_over(hyperbolic_cosine(x)); }},
    {"csch",  gives::number,  everywhere,    [](double x) { return one_over(hyperbolic_sine(x)); }},
    {"coth",  gives::number,  everywhere,    [](double x) { return one_over(hyperbolic_tangent(x)); }},
    {"asinh", gives::number,  everywhere,    [](double x) { return sinh_inverse(x); }},
    {"acosh", gives::number,  acosh_limits,  [](double x) { return cosh_inverse(x); }},
    {"atanh", gives::number,  atanh_limits,  [](double x) { return 0.5 * std::log((x + 1.0) / (1.0 - x)); }},
    {"asech", gives::number,  asech_limits,  [](double x) { return cosh_inverse(1.0 / x); }},
    {"acsch", gives::number,  everywhere,    [](double x) { return sinh_inverse(1.0 / x); }},
    {"acoth", gives::number,  acoth_limits,  [](double x) { return 0.5 * std::log((x + 1.0) / (x - 1.0)); }},
    {"exp",   gives::number,  everywhere,    [](double x) { return std::exp(x); }},
    {"ln",    gives::number,  above_zero,    [](double x) { return std::log(x); }},
    {"log",   gives::number,  above_zero,    [](double x) { return std::log(x); }},
    {"log10", gives::number,  above_zero,    [](double x) { return std::log10(x); }},
};
// clang-format on

// The others, which look at the units of their arguments or keep them.

bool has_dimensions(arguments a);

constexpr argument_test refuses_dimensions = {has_dimensions, {"Computing ", " of a dimensional number"}};

/// A value with another number in comp[0].
inline dim_value with_number(const dim_value& value, double x) {
    dim_value changed = value;
    changed.comp[0] = x;
    return changed;
}
/// Truncation towards zero.
inline double integer_part(double x) {
    return x >= 0.0 ? std::floor(x) : -std::floor(-x);
}
/// Halves are rounded away from zero. The result has passed through 32 bits, except for the sentinel.
inline double rounded(double x) {
    return x == infinity_sentinel ? x : truncate_to_int32(x >= 0.0 ? x + 0.5 : x - 0.5);
}
/// -1, 0 or 1, with 0 for the sentinel and for a not-a-number.
inline double sign_of(double x) {
    return x < 0.0 ? -1.0 : x > 0.0 && x != infinity_sentinel ? 1.0 : 0.0;
}
inline dim_value square_root(const dim_value& value) {
    dim_value root;
    if (value.comp[0] != infinity_sentinel)
        dim_pow(root, value, 0.5);
    return root;
}
inline double remainder_or_sentinel(double x, double divisor) {
    return x == infinity_sentinel ? x : std::fmod(x, divisor);
}

// clang-format off
inline constexpr value_function scalar_functions[] = {
    // name, number of arguments
    //   what is refused, in this order, and what is said
    //   result
    {"ceil", 1,
        {refuses_vectors, refuses_dimensions},
        [](arguments a) { return with_number(a[0], std::ceil(a[0].comp[0])); }},
    {"floor", 1,
        {refuses_vectors, refuses_dimensions},
        [](arguments a) { return with_number(a[0], std::floor(a[0].comp[0])); }},
    {"int", 1,
        {refuses_vectors, refuses_dimensions},
        [](arguments a) { return with_number(a[0], integer_part(a[0].comp[0])); }},
    {"round", 1,
        {refuses_vectors, refuses_dimensions},
        [](arguments a) { return with_number(a[0], rounded(a[0].comp[0])); }},
    {"abs", 1,
        {refuses_vectors},
        [](arguments a) { return with_number(a[0], std::fabs(a[0].comp[0])); }},
    {"sign", 1,
        {refuses_vectors},
        [](arguments a) { return scalar_value(sign_of(a[0].comp[0])); }},
    {"sqrt", 1,
        {refuses_vectors,
         {[](arguments a) { return !(a[0].comp[0] >= 0.0); },
          {"", " of a negative value"}, infinity_sentinel}},
        [](arguments a) { return square_root(a[0]); }},
    {"atan2", 2, // y, x
        {refuses_vectors,
         {[](arguments a) { return !units_agree_or_zero(a[1], a[0]); }, refuses_dimensions.said}},
        [](arguments a) { return scalar_value(std::atan2(a[0].comp[0], a[1].comp[0]), in_radians); }},
    {"mod", 2,
        {refuses_vectors,
         {[](arguments a) { return !units_agree_or_zero(a[0], a[1]); },
          {"Computing ", " with args of diff dimensions"}}},
        [](arguments a) { return with_number(a[0], remainder_or_sentinel(a[0].comp[0], a[1].comp[0])); }},
};
// clang-format on

} // namespace metrify
