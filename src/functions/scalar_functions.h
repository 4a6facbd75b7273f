#pragma once

// The mathematical functions of one or two scalars, a row each. They know no degrees: arguments are in the
// base system, and angles are returned in radians.

#include "functions/builtin.h"
#include "numerics/special/hyperbolic.h"
#include "numerics/special/trigonometry.h"

#include <cmath>
#include <numbers>

namespace metrify {

/// What a formula's result is.
enum class gives { number, radians };

/// What happens where a formula doesn't hold.
enum class outside { gives_infinity, is_refused };

/// Where a formula doesn't hold, and what happens there. Infinity is the sentinel.
struct formula_limits {
    bool (*excludes)(double x) = nullptr;
    outside then = outside::gives_infinity;
    refusal message = {};
};

/// A formula of one dimensionless scalar; angle and amount of substance don't count as dimensions. An
/// argument that is the sentinel gives a plain 0, unless it is refused.
struct formula_function {
    function_facts about;
    gives result;
    formula_limits limits;
    double (*formula)(double x);
};
void run_function(const formula_function& function, compile_ctx& ctx, text_str*& err);

// What several formulas have in common.

constexpr double pi = std::numbers::pi;

/// 1/divisor, and the sentinel for a divisor that is exactly 0.
inline double one_over(double divisor) {
    return divisor == 0.0 ? infinity_sentinel : 1.0 / divisor;
}
/// sqrt(x^2 - 1), for a magnitude of at least 1.
inline double root_of_square_less_one(double x) {
    return std::sqrt(x * x - 1.0);
}
/// The acute angle with the secant |x|.
inline double acute_arcsecant(double x) {
    return std::atan(root_of_square_less_one(x));
}
/// -1 below 0, else 1.
inline double unit_sign(double x) {
    return x < 0.0 ? -1.0 : 1.0;
}
/// The positive number with the hyperbolic cosine t, for t of at least 1.
inline double cosh_inverse(double t) {
    return std::log(root_of_square_less_one(t) + t);
}
inline double sinh_inverse(double t) {
    return std::log(std::sqrt(t * t + 1.0) + t);
}

constexpr formula_limits everywhere = {};
constexpr formula_limits within_one = {[](double x) { return x < -1.0 || x > 1.0; }};
constexpr formula_limits beyond_one = {[](double x) { return !(x <= -1.0 || x >= 1.0); }};
constexpr formula_limits above_zero = {[](double x) { return !(x > 0.0); }};

// Intentional: the wording differs from one to the next, and atanh has no lower limit.
constexpr formula_limits acosh_limits = {
    [](double x) { return x < 1.0; }, outside::is_refused, {"Arg to ", " must be greater than one"}};
constexpr formula_limits atanh_limits = {
    [](double x) { return x > 1.0; }, outside::is_refused, {"Arg of ", " must be less than one"}};
constexpr formula_limits asech_limits = {[](double x) { return x < 0.0 || x > 1.0; },
                                         outside::is_refused,
                                         {"ARg to ", " must be between zero and one"}};
constexpr formula_limits acoth_limits = {[](double x) { return std::fabs(x) < 1.0; },
                                         outside::is_refused,
                                         {"Arg of ", " must be greater than one"}};

// Intentional: some formulas differ from the textbook's: asec in the second quadrant, acsc of a negative
// number, log for the natural logarithm.
// clang-format off
inline constexpr formula_function formulas[] = {
    // the facts
    //   result, limits, formula
    {{77, family::trigonometry, "sin", 1, "x", "The sine",
      help::angle, help::number, help::anywhere, "sin(30 deg)", "= 0.5"},
     gives::number, everywhere, [](double x) { return sine(x); }},
    {{25, family::trigonometry, "cos", 1, "x", "The cosine",
      help::angle, help::number, help::anywhere, "cos(60 deg)", "= 0.5"},
     gives::number, everywhere, [](double x) { return cosine(x); }},
    {{82, family::trigonometry, "tan", 1, "x", "The tangent",
      help::angle, help::number, help::anywhere, "tan(45 deg)", "= 1"},
     gives::number, everywhere, [](double x) { return tangent(x); }},
    {{74, family::trigonometry, "sec", 1, "x", "The secant, 1/cos(x)",
      help::angle, help::number, "every x; infinite where the cosine is 0", "sec(60 deg)", "= 2"},
     gives::number, everywhere, [](double x) { return one_over(cosine(x)); }},
    {{30, family::trigonometry, "csc", 1, "x", "The cosecant, 1/sin(x)",
      help::angle, help::number, "every x; infinite where the sine is 0", "csc(30 deg)", "= 2"},
     gives::number, everywhere, [](double x) { return one_over(sine(x)); }},
    {{27, family::trigonometry, "cot", 1, "x", "The cotangent, 1/tan(x)",
      help::angle, help::number, "every x; infinite where the tangent is 0", "cot(45 deg)", "= 1"},
     gives::number, everywhere, [](double x) { return one_over(tangent(x)); }},
    {{9, family::trigonometry, "asin", 1, "x", "The angle with the sine x",
      help::number, help::radians, "-1 to 1; infinite outside", "asin(1); deg", "= 90 deg"},
     gives::radians, within_one, [](double x) { return std::asin(x); }},
    {{2, family::trigonometry, "acos", 1, "x", "The angle with the cosine x",
      help::number, help::radians, "-1 to 1; infinite outside", "acos(0.5); deg", "= 60 deg"},
     gives::radians, within_one, [](double x) { return std::acos(x); }},
    {{10, family::trigonometry, "atan", 1, "x", "The angle with the tangent x",
      help::number, help::radians, help::anywhere, "atan(1); deg", "= 45 deg"},
     gives::radians, everywhere, [](double x) { return std::atan(x); }},
    {{8, family::trigonometry, "asec", 1, "x", "The angle with the secant x",
      help::number, help::radians, "-1 and below, 1 and above; infinite between", "asec(2); deg", "= 60 deg"},
     gives::radians, beyond_one, [](double x) { return x < 0.0 ? pi - acute_arcsecant(x) : acute_arcsecant(x); }},
    {{4, family::trigonometry, "acsc", 1, "x", "The angle with the cosecant x; below -1 its distance from -pi",
      help::number, help::radians, "-1 and below, 1 and above; infinite between", "acsc(2); deg", "= 30 deg"},
     gives::radians, beyond_one, [](double x) { return unit_sign(x) * std::acos(root_of_square_less_one(x) / x); }},
    {{3, family::trigonometry, "acot", 1, "x", "The angle with the cotangent x; below 0 that angle less pi",
      help::number, help::radians, help::anywhere, "acot(1); deg", "= 45 deg"},
     gives::radians, everywhere, [](double x) { return unit_sign(x) * (pi / 2.0) - std::atan(x); }},
    {{78, family::hyperbolic, "sinh", 1, "x", "The hyperbolic sine",
      help::number, help::number, help::anywhere, "sinh(1)", "= 1.1752"},
     gives::number, everywhere, [](double x) { return hyperbolic_sine(x); }},
    {{26, family::hyperbolic, "cosh", 1, "x", "The hyperbolic cosine",
      help::number, help::number, help::anywhere, "cosh(1)", "= 1.54308"},
     gives::number, everywhere, [](double x) { return hyperbolic_cosine(x); }},
    {{83, family::hyperbolic, "tanh", 1, "x", "The hyperbolic tangent",
      help::number, help::number, help::anywhere, "tanh(1)", "= 0.761594"},
     gives::number, everywhere, [](double x) { return hyperbolic_tangent(x); }},
    {{75, family::hyperbolic, "sech", 1, "x", "The hyperbolic secant, 1/cosh(x)",
      help::number, help::number, help::anywhere, "sech(0)", "= 1"},
     gives::number, everywhere, [](double x) { return one_over(hyperbolic_cosine(x)); }},
    {{31, family::hyperbolic, "csch", 1, "x", "The hyperbolic cosecant, 1/sinh(x)",
      help::number, help::number, "every x; infinite at 0", "csch(1)", "= 0.850918"},
     gives::number, everywhere, [](double x) { return one_over(hyperbolic_sine(x)); }},
    {{28, family::hyperbolic, "coth", 1, "x", "The hyperbolic cotangent, 1/tanh(x)",
      help::number, help::number, "every x; infinite at 0", "coth(1)", "= 1.31304"},
     gives::number, everywhere, [](double x) { return one_over(hyperbolic_tangent(x)); }},
    {{84, family::hyperbolic, "asinh", 1, "x", "The inverse of sinh",
      help::number, help::number, help::anywhere, "asinh(1)", "= 0.881374"},
     gives::number, everywhere, [](double x) { return sinh_inverse(x); }},
    {{85, family::hyperbolic, "acosh", 1, "x", "The inverse of cosh",
      help::number, help::number, "1 and above", "acosh(2)", "= 1.31696"},
     gives::number, acosh_limits, [](double x) { return cosh_inverse(x); }},
    {{86, family::hyperbolic, "atanh", 1, "x", "The inverse of tanh",
      help::number, help::number, "-1 to 1; no message below", "atanh(0.5)", "= 0.549306"},
     gives::number, atanh_limits, [](double x) { return 0.5 * std::log((x + 1.0) / (1.0 - x)); }},
    {{87, family::hyperbolic, "asech", 1, "x", "The inverse of sech",
      help::number, help::number, "0 to 1", "asech(0.5)", "= 1.31696"},
     gives::number, asech_limits, [](double x) { return cosh_inverse(1.0 / x); }},
    {{88, family::hyperbolic, "acsch", 1, "x", "The inverse of csch",
      help::number, help::number, help::anywhere, "acsch(1)", "= 0.881374"},
     gives::number, everywhere, [](double x) { return sinh_inverse(1.0 / x); }},
    {{89, family::hyperbolic, "acoth", 1, "x", "The inverse of coth",
      help::number, help::number, "-1 and below, 1 and above", "acoth(2)", "= 0.549306"},
     gives::number, acoth_limits, [](double x) { return 0.5 * std::log((x + 1.0) / (x - 1.0)); }},
    {{40, family::logarithms, "exp", 1, "x", "e to the power x",
      help::number, help::number, help::anywhere, "exp(1)", "= 2.71828"},
     gives::number, everywhere, [](double x) { return std::exp(x); }},
    {{60, family::logarithms, "ln", 1, "x", "The natural logarithm",
      help::number, help::number, "above 0; infinite elsewhere", "ln(100)", "= 4.60517"},
     gives::number, above_zero, [](double x) { return std::log(x); }},
    {{61, family::logarithms, "log", 1, "x", "The natural logarithm, the same as ln",
      help::number, help::number, "above 0; infinite elsewhere", "log(100)", "= 4.60517"},
     gives::number, above_zero, [](double x) { return std::log(x); }},
    {{62, family::logarithms, "log10", 1, "x", "The decimal logarithm",
      help::number, help::number, "above 0; infinite elsewhere", "log10(100)", "= 2"},
     gives::number, above_zero, [](double x) { return std::log10(x); }},
};
// clang-format on

// The other functions, which test the units of their arguments or keep them.

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
/// Halves are rounded away from zero. The result is limited to 32 bits, except for the sentinel.
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
    // the facts
    //   what is refused, in this order, and the message
    //   result
    // y, x
    {{11, family::trigonometry, "atan2", 2, "y, x", "The angle of the point (x, y)",
      "two quantities of the same units", help::radians, help::no_limits, "atan2(1 m, 1 m); deg", "= 45 deg"},
     {refuses_vectors,
      {[](arguments a) { return !units_agree_or_zero(a[1], a[0]); }, refuses_dimensions.message}},
     [](arguments a) { return scalar_value(std::atan2(a[0].comp[0], a[1].comp[0]), in_radians); }},
    {{80, family::logarithms, "sqrt", 1, "x", "The square root",
      "any quantity", "half its units", "0 and above", "sqrt(4 m^2)", "= 2 m"},
     {refuses_vectors,
      {[](arguments a) { return !(a[0].comp[0] >= 0.0); },
       {"", " of a negative value"}, infinity_sentinel}},
     [](arguments a) { return square_root(a[0]); }},
    {{1, family::rounding, "abs", 1, "x", "The magnitude of a scalar",
      "any quantity", "its units", help::anywhere, "abs(-3 m)", "= 3 m"},
     {refuses_vectors},
     [](arguments a) { return with_number(a[0], std::fabs(a[0].comp[0])); }},
    {{76, family::rounding, "sign", 1, "x", "-1, 0 or 1",
      "any quantity", help::number, help::anywhere, "sign(-5 m)", "= -1"},
     {refuses_vectors},
     [](arguments a) { return scalar_value(sign_of(a[0].comp[0])); }},
    {{22, family::rounding, "ceil", 1, "x", "The least whole number that isn't below x",
      help::angle, help::number_or_angle, help::anywhere, "ceil(2.1)", "= 3"},
     {refuses_vectors, refuses_dimensions},
     [](arguments a) { return with_number(a[0], std::ceil(a[0].comp[0])); }},
    {{44, family::rounding, "floor", 1, "x", "The greatest whole number that isn't above x",
      help::angle, help::number_or_angle, help::anywhere, "floor(-2.5)", "= -3"},
     {refuses_vectors, refuses_dimensions},
     [](arguments a) { return with_number(a[0], std::floor(a[0].comp[0])); }},
    {{55, family::rounding, "int", 1, "x", "x without its fraction",
      help::angle, help::number_or_angle, help::anywhere, "int(-2.5)", "= -2"},
     {refuses_vectors, refuses_dimensions},
     [](arguments a) { return with_number(a[0], integer_part(a[0].comp[0])); }},
    {{73, family::rounding, "round", 1, "x", "The nearest whole number, halves away from 0",
      help::angle, help::number_or_angle, "32-bit integers; -2147483648 outside", "round(2.5)", "= 3"},
     {refuses_vectors, refuses_dimensions},
     [](arguments a) { return with_number(a[0], rounded(a[0].comp[0])); }},
    {{65, family::rounding, "mod", 2, "x, d", "The remainder of x divided by d, with the sign of x",
      "two quantities of the same units", "their units", "d other than 0", "mod(7 m, 2 m)", "= 1 m"},
     {refuses_vectors,
      {[](arguments a) { return !units_agree_or_zero(a[0], a[1]); },
       {"Computing ", " with args of diff dimensions"}}},
     [](arguments a) { return with_number(a[0], remainder_or_sentinel(a[0].comp[0], a[1].comp[0])); }},
};
// clang-format on

} // namespace metrify
