#pragma once

// The gamma function's logarithm, the incomplete gamma functions, and beta, complete and incomplete.
//
// Source: C. Lanczos (SIAM J. Numer. Anal. B 1, 1964) for the logarithm; the series and the continued
// fraction of Abramowitz and Stegun 6.5.29, 6.5.31 and 26.5.8, the fractions by the modified method of Lentz;
// Press et al., Numerical Recipes, 6.1, 6.2 and 6.4.
//
// Accuracy: 3e-10 for gamma itself and beta; the others 5e-7 relative, as the tolerance of their series and
// fractions is 3e-7. Below x = a + 1 Q(a, x) is the complement of P, and its error is absolute.
//
// Error texts; the routine that fails returns 0, and its caller continues with that value:
//   "ERROR: x must be > 0 in in routine math_func_gammln().\n"
//   "ERROR: x must be >= 0.0 in in routine NAME().\n"       math_func_gammp, math_func_gammq; tested first
//   "ERROR: a must be > 0.0 in in routine NAME().\n"        the same two
//   "ERROR: x must be >= 0.0 in in routine math_func_gser().\n"
//   "ERROR: a too large, ITMAX too small routine math_func_gser().\n"
//   "ERROR:  a too large, ITMAX too small in in routine math_func_gcf().\n"
//   "ERROR:  x must be >= 0 in routine math_func_betai().\n"
//   "ERROR:  x must be <= 1 in routine math_func_betai().\n"
//   "ERROR:  a or b too big or MAXIT too small in routine math_func_betacf().\n"

#include "base/text_str.h"

namespace metrify {

/// The logarithm of gamma(x), for x > 0.
double math_func_gammln(double x, text_str*& err);

/// The incomplete gamma function P(a, x), for a > 0 and x >= 0. It is 1 if the fraction fails.
double math_func_gammp(double a, double x, text_str*& err);
/// Its complement Q(a, x). It is 1 if the series fails.
double math_func_gammq(double a, double x, text_str*& err);

/// P(a, x) by its series, and the logarithm of gamma(a).
void math_func_gser(double& value, double a, double x, double& log_gamma, text_str*& err);
/// Q(a, x) by its continued fraction, and the logarithm of gamma(a); both 0 if the fraction fails.
void math_func_gcf(double& value, double a, double x, double& log_gamma, text_str*& err);

/// The beta function of z and w, both > 0.
double math_func_beta(double z, double w, text_str*& err);
/// The incomplete beta function I(a, b) at x from 0 to 1, for a and b > 0.
double math_func_betai(double a, double b, double x, text_str*& err);
/// The continued fraction of the incomplete beta function.
double math_func_betacf(double a, double b, double x, text_str*& err);

} // namespace metrify
