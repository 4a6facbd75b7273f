#pragma once

// The Bessel functions of real order, ordinary and modified, with their derivatives.
//
// Source: the continued fractions of Steed (A. R. Barnett et al., Comput. Phys. Commun. 8, 1974) with the
// modified method of Lentz, and the series of N. M. Temme (J. Comput. Phys. 19, 1975, and 21, 1976) for x
// below 2; Press et al., Numerical Recipes, 6.7.
//
// Accuracy: 1e-13 relative, with two exceptions. Beyond its order a function oscillates: within a tenth of
// the amplitude of a zero, J and Y are good to 1e-14 of the amplitude. And below x = 2 the error of K comes
// up to 1e-14 of I, which the digits of the tables of the gamma factors allow: at orders near 0 that
// is 1.7e-13 of K as x comes near 2. A negative order takes the sine and cosine of the double next to |order|
// pi.
//
// Domain: x > 0, order >= 0 for the routines with four outputs, any order for the others. The second kind
// overflows for large orders; the first is then a not-a-number as well where the recurrences overflow.
//
// Error texts, after each of which all four outputs are 0; NAME is math_func_bessjy or math_func_bessik:
//   "ERROR:   x must be > 0 in NAME().\n"
//   "ERROR:   nu must be >= 0 in NAME().\n"
//   "ERROR: x too large in NAME(); try asymptotic expansion.\n"  the first continued fraction took too long
//   "ERROR: series failed to converge in NAME().\n"
//   "ERROR: cf2 failed to converge in NAME().\n"                 the second one did

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
