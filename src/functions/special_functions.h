#pragma once

// The special functions of one to four dimensionless scalars, a row each: the routine that computes them, and
// how its arguments are prepared. Angle and amount of substance don't count as dimensions.

#include "functions/builtin.h"
#include "numerics/special/bessel/airy.h"
#include "numerics/special/bessel/bessel_integer.h"
#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/carlson.h"
#include "numerics/special/elliptic.h"
#include "numerics/special/error_functions.h"
#include "numerics/special/exponential_integrals.h"
#include "numerics/special/gamma_functions.h"
#include "numerics/special/jacobi.h"

#include <array>
#include <cmath>

namespace metrify {

/// The arguments' numbers, in the order in which they were written.
using special_arguments = std::array<double, 4>;

/// What a function does with its arguments beside the usual.
enum class special_arguments_rule {
    usual,
    first_is_integer,     // and refused otherwise
    last_may_be_sentinel, // it then goes to the routine
};

/// Each argument, the last one first, must be a scalar without dimensions. If one of those that are looked at
/// is the sentinel the routine isn't called and the result is a plain 0. What the routine returns is the
/// result, also where it leaves a text in err.
struct special_function {
    std::string_view name; // as it stands in the refusals
    std::size_t count;     // of its arguments
    double (*value)(const special_arguments& x, text_str*& err);
    special_arguments_rule rule = special_arguments_rule::usual;
};
void run_function(const special_function& function, compile_ctx& ctx, text_str*& err);

/// A routine of integer order where the order is whole, one of real order elsewhere.
inline double of_order(double (*integer)(std::int32_t, double, text_str*&),
                       double (*real)(double, double, text_str*&), const special_arguments& x,
                       text_str*& err) {
    return std::floor(x[0]) == x[0] ? integer(truncate_to_int32(x[0]), x[1], err) : real(x[0], x[1], err);
}

struct airy_values {
    double ai, bi, ai_prime, bi_prime;
};
inline airy_values airy(double x, text_str*& err) {
    airy_values f = {};
    math_func_airy(x, f.ai, f.bi, f.ai_prime, f.bi_prime, err);
    return f;
}

struct sncndn_values {
    double sn, cn, dn;
};
/// The routine takes the square of k as it is; zeros if that is the sentinel.
inline sncndn_values jacobi(const special_arguments& x, text_str*& err) {
    sncndn_values f = {};
    const double square_of_k = x[1] * x[1];
    if (square_of_k != infinity_sentinel)
        math_func_sncndn(x[0], square_of_k, f.sn, f.cn, f.dn, err);
    return f;
}

/// The exponential is not taken of a value that comes with a text.
inline double gamma_function(double x, text_str*& err) {
    const double logarithm = math_func_gammln(x, err);
    return str_is_empty(err) ? std::exp(logarithm) : logarithm;
}

// clang-format off
inline constexpr special_function special_functions[] = {
    // name, number of arguments, value
    {"AiryAi", 1, [](const special_arguments& x, text_str*& err) { return airy(x[0], err).ai; }},
    {"AiryBi", 1, [](const special_arguments& x, text_str*& err) { return airy(x[0], err).bi; }},
    {"BesselI", 2, [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessi, math_func_bessi_frac, x, err); }},
    {"BesselJ", 2, [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessj, math_func_bessj_frac, x, err); }},
    {"BesselK", 2, [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessk, math_func_bessk_frac, x, err); }},
    {"BesselY", 2, [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessy, math_func_bessy_frac, x, err); }},
    {"BetaFunc", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_beta(x[0], x[1], err); }},
    {"CarlsonRC", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rc(x[0], x[1], err); }},
    {"CarlsonRD", 3, [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rd(x[0], x[1], x[2], err); }},
    {"CarlsonRF", 3, [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rf(x[0], x[1], x[2], err); }},
    {"CarlsonRJ", 4, [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rj(x[0], x[1], x[2], x[3], err); },
        special_arguments_rule::last_may_be_sentinel},
    {"DawsonIntegral", 1, [](const special_arguments& x, text_str*&) { return math_func_dawson(x[0]); }},
    {"EllipticE", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_e(x[0], x[1], err); }},
    {"EllipticF", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_f(x[0], x[1], err); }},
    {"EllipticPi", 3, [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_pi(x[0], x[1], x[2], err); }},
    {"Erf", 1, [](const special_arguments& x, text_str*& err) { return math_func_erf(x[0], err); }},
    {"Erfc", 1, [](const special_arguments& x, text_str*& err) { return math_func_erfc(x[0], err); }},
    {"ExpInt", 1, [](const special_arguments& x, text_str*& err) { return math_func_expint(1, x[0], err); }},
    {"ExpIntEi", 1, [](const special_arguments& x, text_str*& err) { return math_func_ei(x[0], err); }},
    {"ExpIntN", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_expint(truncate_to_int32(x[0]), x[1], err); },
        special_arguments_rule::first_is_integer},
    {"GammaFunc", 1, [](const special_arguments& x, text_str*& err) { return gamma_function(x[0], err); }},
    {"GammaPFunc", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_gammp(x[0], x[1], err); }},
    {"GammaQFunc", 2, [](const special_arguments& x, text_str*& err) {
        return math_func_gammq(x[0], x[1], err); }},
    {"IncBetaFunc", 3, [](const special_arguments& x, text_str*& err) {
        return math_func_betai(x[0], x[1], x[2], err); }},
    {"JacobiCN", 2, [](const special_arguments& x, text_str*& err) { return jacobi(x, err).cn; }},
    {"JacobiDN", 2, [](const special_arguments& x, text_str*& err) { return jacobi(x, err).dn; }},
    {"JacobiSN", 2, [](const special_arguments& x, text_str*& err) { return jacobi(x, err).sn; }},
    {"LogGammaFunc", 1, [](const special_arguments& x, text_str*& err) { return math_func_gammln(x[0], err); }},
    {"Normsdist", 1, [](const special_arguments& x, text_str*&) { return math_func_CumNormal(x[0]); }},
    {"Normsinv", 1, [](const special_arguments& x, text_str*& err) {
        return math_func_CumNormalInv(x[0], err); }},
};
// clang-format on

} // namespace metrify
