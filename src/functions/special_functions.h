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

/// How a function treats its arguments.
enum class special_arguments_rule {
    usual,
    first_is_integer,     // otherwise it is refused
    last_may_be_sentinel, // and is passed to the routine
};

/// Each argument, the last one first, must be a scalar without dimensions. If one is the sentinel, the
/// routine isn't called and the result is a plain 0. Otherwise the result is what the routine returns, even
/// if it leaves a text in err.
struct special_function {
    function_facts about;
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
/// The routine takes the square of k for the complementary parameter; zeros if it is the sentinel.
inline sncndn_values jacobi(const special_arguments& x, text_str*& err) {
    sncndn_values f = {};
    const double square_of_k = x[1] * x[1];
    if (square_of_k != infinity_sentinel)
        math_func_sncndn(x[0], square_of_k, f.sn, f.cn, f.dn, err);
    return f;
}

/// If the routine fails, its value is returned without the exponential.
inline double gamma_function(double x, text_str*& err) {
    const double logarithm = math_func_gammln(x, err);
    return str_is_empty(err) ? std::exp(logarithm) : logarithm;
}

// clang-format off
inline constexpr special_function special_functions[] = {
    // the facts
    //   value
    {{13, family::bessel, "BesselJ", 2, "n, x", "The Bessel function of the first kind, to 6e-7, for other than whole orders to 1e-13",
      help::order_and_x, help::number, help::first_kind_domain, "BesselJ(0, 1)", "= 0.765198"},
     [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessj, math_func_bessj_frac, x, err); }},
    {{15, family::bessel, "BesselY", 2, "n, x", "The Bessel function of the second kind, as accurate",
      help::order_and_x, help::number, help::second_kind_domain, "BesselY(0, 1)", "= 0.088257"},
     [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessy, math_func_bessy_frac, x, err); }},
    {{12, family::bessel, "BesselI", 2, "n, x", "The modified Bessel function of the first kind, as accurate",
      help::order_and_x, help::number, help::first_kind_domain, "BesselI(0, 1)", "= 1.26607"},
     [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessi, math_func_bessi_frac, x, err); }},
    {{14, family::bessel, "BesselK", 2, "n, x", "The modified Bessel function of the second kind, as accurate, just below x = 2 to 2e-13",
      help::order_and_x, help::number, help::second_kind_domain, "BesselK(2, 1)", "= 1.62484"},
     [](const special_arguments& x, text_str*& err) {
        return of_order(math_func_bessk, math_func_bessk_frac, x, err); }},
    {{5, family::bessel, "AiryAi", 1, "x", "The Airy function Ai, to 1e-13",
      help::number, help::number, "-600 to 100000; a message where the fractions end", "AiryAi(1)", "= 0.135292"},
     [](const special_arguments& x, text_str*& err) { return airy(x[0], err).ai; }},
    {{6, family::bessel, "AiryBi", 1, "x", "The Airy function Bi, to 1e-13",
      help::number, help::number, "-600 to 104, infinite above; a message where the fractions end", "AiryBi(1)", "= 1.20742"},
     [](const special_arguments& x, text_str*& err) { return airy(x[0], err).bi; }},
    {{48, family::gamma_and_beta, "GammaFunc", 1, "x", "The gamma function, to 3e-10",
      help::number, help::number, "x > 0", "GammaFunc(5)", "= 24"},
     [](const special_arguments& x, text_str*& err) { return gamma_function(x[0], err); }},
    {{63, family::gamma_and_beta, "LogGammaFunc", 1, "x", "The logarithm of the gamma function, to 3e-10",
      help::number, help::number, "x > 0", "LogGammaFunc(5)", "= 3.17805"},
     [](const special_arguments& x, text_str*& err) { return math_func_gammln(x[0], err); }},
    {{49, family::gamma_and_beta, "GammaPFunc", 2, "a, x", "The incomplete gamma function P, to 5e-7",
      help::numbers, help::number, "a > 0, x at least 0; a up to some 1000", "GammaPFunc(1, 1)", "= 0.632121"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_gammp(x[0], x[1], err); }},
    {{50, family::gamma_and_beta, "GammaQFunc", 2, "a, x", "Its complement Q, to 5e-7",
      help::numbers, help::number, "a > 0, x at least 0; a up to some 1000", "GammaQFunc(1, 1)", "= 0.367879"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_gammq(x[0], x[1], err); }},
    {{16, family::gamma_and_beta, "BetaFunc", 2, "a, b", "The beta function, to 3e-10",
      help::numbers, help::number, "a > 0, b > 0", "BetaFunc(2, 3)", "= 0.0833333"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_beta(x[0], x[1], err); }},
    {{54, family::gamma_and_beta, "IncBetaFunc", 3, "a, b, x", "The incomplete beta function I(a, b) at x, to 5e-7",
      help::numbers, help::number, "a > 0, b > 0, x from 0 to 1", "IncBetaFunc(2, 3, 0.4)", "= 0.5248"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_betai(x[0], x[1], x[2], err); }},
    {{37, family::error_and_normal, "Erf", 1, "x", "The error function, to 3e-7",
      help::number, help::number, help::anywhere, "Erf(1)", "= 0.842701"},
     [](const special_arguments& x, text_str*& err) { return math_func_erf(x[0], err); }},
    {{38, family::error_and_normal, "Erfc", 1, "x", "Its complement 1 - Erf(x), to 3e-7",
      help::number, help::number, help::anywhere, "Erfc(-1)", "= 1.8427"},
     [](const special_arguments& x, text_str*& err) { return math_func_erfc(x[0], err); }},
    {{66, family::error_and_normal, "Normsdist", 1, "x", "The probability of a standard normal variable below x, to 3e-9",
      help::number, help::number, "every x; 0 and 1 from -6 and 6 on", "Normsdist(1.96)", "= 0.975002"},
     [](const special_arguments& x, text_str*&) { return math_func_CumNormal(x[0]); }},
    {{67, family::error_and_normal, "Normsinv", 1, "p", "The x at which that probability is p, to 4e-9",
      help::number, help::number, "0 to 1; the ends are finite", "Normsinv(0.975)", "= 1.95996"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_CumNormalInv(x[0], err); }},
    {{32, family::error_and_normal, "DawsonIntegral", 1, "x", "Dawson's integral, to 5e-7",
      help::number, help::number, help::anywhere, "DawsonIntegral(1)", "= 0.538079"},
     [](const special_arguments& x, text_str*&) { return math_func_dawson(x[0]); }},
    {{41, family::exponential_integrals, "ExpInt", 1, "x", "The exponential integral E1, to 5e-7",
      help::number, help::number, "x > 0", "ExpInt(1)", "= 0.219384"},
     [](const special_arguments& x, text_str*& err) { return math_func_expint(1, x[0], err); }},
    {{43, family::exponential_integrals, "ExpIntN", 2, "n, x", "The exponential integral of a whole order n, to 5e-7",
      help::numbers, help::number, "n at least 0; x > 0, from n = 2 on also 0", "ExpIntN(2, 0)", "= 1"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_expint(truncate_to_int32(x[0]), x[1], err); },
        special_arguments_rule::first_is_integer},
    {{42, family::exponential_integrals, "ExpIntEi", 1, "x", "The exponential integral Ei, to 3e-7",
      help::number, help::number, "x > 0", "ExpIntEi(1)", "= 1.89512", {.name_in_count = "ExpInt"}},
     [](const special_arguments& x, text_str*& err) { return math_func_ei(x[0], err); }},
    {{20, family::elliptic, "CarlsonRF", 3, "x, y, z", "Carlson's elliptic integral of the first kind",
      help::numbers, help::number, "none negative, at most one 0", "CarlsonRF(1, 2, 3)", "= 0.726946"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rf(x[0], x[1], x[2], err); }},
    {{19, family::elliptic, "CarlsonRD", 3, "x, y, z", "Carlson's elliptic integral of the second kind",
      help::numbers, help::number, "none negative, z and one of x, y above 0", "CarlsonRD(1, 1, 1)", "= 1"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rd(x[0], x[1], x[2], err); }},
    {{18, family::elliptic, "CarlsonRC", 2, "x, y", "Carlson's degenerate integral RC with 11 more in its series: near twelve times the integral",
      help::numbers, help::number, "x at least 0, y > 0", "CarlsonRC(1, 1)", "= 12"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rc(x[0], x[1], err); }},
    {{21, family::elliptic, "CarlsonRJ", 4, "x, y, z, p", "Carlson's integral of the third kind, formed from such values of RC",
      help::numbers, help::number, "none negative, p > 0", "CarlsonRJ(1, 1, 1, 1)", "= 9.25"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_carlsons_rj(x[0], x[1], x[2], x[3], err); },
        special_arguments_rule::last_may_be_sentinel},
    {{35, family::elliptic, "EllipticF", 2, "phi, k", "Legendre's integral of the first kind, modulus k",
      "an angle; a number", help::number, "-90 deg to 90 deg; k sin(phi) from -1 to 1", "EllipticF(30 deg, 0.5)", "= 0.529429"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_f(x[0], x[1], err); }},
    {{34, family::elliptic, "EllipticE", 2, "phi, k", "Legendre's integral of the second kind, modulus k",
      "an angle; a number", help::number, "-90 deg to 90 deg; k sin(phi) from -1 to 1", "EllipticE(90 deg, 0)", "= 1.5708"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_e(x[0], x[1], err); }},
    {{36, family::elliptic, "EllipticPi", 3, "phi, n, k", "Legendre's integral of the third kind with 1 + n sin^2, formed from CarlsonRJ",
      "an angle; numbers", help::number, "-90 deg to 90 deg; k sin(phi) from -1 to 1; n sin(phi)^2 above -1", "EllipticPi(30 deg, 0, 0.5)", "= 0.529429"},
     [](const special_arguments& x, text_str*& err) {
        return math_func_elliptic_pi(x[0], x[1], x[2], err); }},
    {{58, family::elliptic, "JacobiSN", 2, "u, k", "The Jacobian function sn whose complementary parameter is k^2, to 1e-7",
      help::numbers, help::number, help::anywhere, "JacobiSN(0.5, 0)", "= 0.462117"},
     [](const special_arguments& x, text_str*& err) { return jacobi(x, err).sn; }},
    {{56, family::elliptic, "JacobiCN", 2, "u, k", "The Jacobian function cn of the same",
      help::numbers, help::number, help::anywhere, "JacobiCN(0.5, 0)", "= 0.886819"},
     [](const special_arguments& x, text_str*& err) { return jacobi(x, err).cn; }},
    {{57, family::elliptic, "JacobiDN", 2, "u, k", "The Jacobian function dn of the same",
      help::numbers, help::number, help::anywhere, "JacobiDN(0.5, 1)", "= 1"},
     [](const special_arguments& x, text_str*& err) { return jacobi(x, err).dn; }},
};
// clang-format on

} // namespace metrify
