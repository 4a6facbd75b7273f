#pragma once

// The error function, the normal distribution with its inverse, and Dawson's integral.
//
// Source: Abramowitz and Stegun 7.1 with the incomplete gamma functions; a rational approximation for the
// normal distribution; J. D. Beasley and S. G. Springer (Appl. Stat. 26, 1977) with the tails of B. Moro
// (Risk 8, 1995) for its inverse; G. B. Rybicki (Computers in Physics 3, 1989) for Dawson's integral, beyond
// 8e8 the first term of its asymptotic series. Press et al., Numerical Recipes, 6.2 and 6.10.
//
// Accuracy: 3e-7 relative for both error functions; 3e-9 absolute for the normal distribution; 4e-9 for its
// inverse, whose argument is clamped to 1e-16 and 1 - 1e-16; 5e-7 relative for Dawson's integral.
//
// Error texts: those of the incomplete gamma functions for the error functions, and, with the result 0,
//   "ERROR: n must be >= 0 in in routine math_func_CumNormalInv().\n"
//   "ERROR: n must be <= 1 in in routine math_func_CumNormalInv().\n"
// The other routines don't fail.

#include "base/text_str.h"

namespace metrify {

double math_func_erf(double x, text_str*& err);
double math_func_erfc(double x, text_str*& err);

/// The probability of a standard normal variable below x; 0 for a not-a-number.
double math_func_CumNormal(double x);
/// The x at which the probability is p.
double math_func_CumNormalInv(double p, text_str*& err);

double math_func_dawson(double x);

} // namespace metrify
