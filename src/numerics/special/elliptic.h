#pragma once

// Legendre's elliptic integrals of the three kinds, by Carlson's forms.
//
// Source: B. C. Carlson, Numer. Math. 33 (1979); Press et al., Numerical Recipes, 6.11.
//
// Accuracy: 1e-14 relative for the first two kinds, less where |k sin(phi)| is within 1e-4 of 1. The third
// kind uses the values of math_func_carlsons_rj, which are not those of the integral unless n is 0.
//
// Domain: k sin(phi) from -1 to 1, and n sin(phi)^2 > -1 for the third kind. The sign of n is that of
// 1 + n sin^2 in the integrand's denominator. phi is between -pi/2 and pi/2: the formulas use its sine and
// the square of its cosine only.
//
// Error texts: those of the Carlson forms; a form that fails contributes 0 to the sums.

#include "base/text_str.h"

namespace metrify {

double math_func_elliptic_f(double phi, double k, text_str*& err);
double math_func_elliptic_e(double phi, double k, text_str*& err);
double math_func_elliptic_pi(double phi, double n, double k, text_str*& err);

} // namespace metrify
