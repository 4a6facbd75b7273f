#pragma once

// The Bessel functions of real order, ordinary and modified, with their derivatives.
//
// Source: the continued fractions of Steed (A. R. Barnett et al., Comput. Phys. Commun. 8, 1974) with the
// modified method of Lentz, and the series of N. M. Temme (J. Comput. Phys. 19, 1975, and 21, 1976) for x
// below 2; Press et al., Numerical Recipes, 6.7.
//
// Accuracy: 1e-13 relative, with two exceptions. For x beyond the order J and Y
// oscillate: where they are below a tenth of the amplitude, the error is 1e-14 of the amplitude. Below x = 2
// the error of K is up to 1e-14 of I, because of the digits of the coefficients of the gamma factors: at
// orders near 0 and x near 2 that is 1.7e-13 of K. A negative order uses the sine and cosine of the rounded
// |order| pi.
//
// Domain: x > 0, order >= 0 for the routines with four outputs, any order for the others. The second kind
// overflows for large orders; the first is a not-a-number if its recurrence overflows.
//
// Error texts, after each of which all four outputs are 0; NAME is math_func_bessjy or math_func_bessik:
//   "ERROR:   x must be > 0 in NAME().\n"
//   "ERROR:   nu must be >= 0 in NAME().\n"
//   "ERROR: x too large in NAME(); try asymptotic expansion.\n"
//       the first continued fraction does not converge
//   "ERROR: series failed to converge in NAME().\n"
//   "ERROR: cf2 failed to converge in NAME().\n"
//       the second one does not converge

#include "base/text_str.h"

namespace metrify {

/// J and Y of order nu with their derivatives.
void math_func_bessjy(double x, double nu, double& j, double& y, double& j_prime, double& y_prime,
                      text_str*& err);
/// I and K of order nu with their derivatives.
void math_func_bessik(double x, double nu, double& i, double& k, double& i_prime, double& k_prime,
                      text_str*& err);

double math_func_bessj_frac(double nu, double x, text_str*& err);
double math_func_bessy_frac(double nu, double x, text_str*& err);
double math_func_bessi_frac(double nu, double x, text_str*& err);
double math_func_bessk_frac(double nu, double x, text_str*& err);

} // namespace metrify
