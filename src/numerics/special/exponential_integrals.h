#pragma once

// The exponential integrals.
//
// Source: Abramowitz and Stegun 5.1.10 to 5.1.12 and 5.1.22, the fraction by the modified method of Lentz;
// Press et al., Numerical Recipes, 6.3.
//
// Accuracy: 5e-7 relative for E_n, 3e-7 for Ei (near its zero at 0.3725 that is absolute).
//
// Error texts, with the result 0, in the order of the tests:
//   "ERROR:  n must be >= 0 in routine math_func_expint().\n"
//   "ERROR:  x must be >= 0 in routine math_func_expint().\n"
//   "ERROR:  arg error routine math_func_expint().\n"              x is 0, and n is 0 or 1
//   "ERROR:  continued fraction failed in routine math_func_expint().\n"
//   "ERROR:  series failed in routine math_func_expint().\n"
//   "ERROR:  x must be > 0 in routine math_func_ei().\n"
//   "ERROR:  Series failed to converge in routine math_func_ei().\n"

#include "base/text_str.h"

#include <cstdint>

namespace metrify {

/// E_n(x), for n >= 0 and x >= 0; at x = 0 from n = 2 on.
double math_func_expint(std::int32_t n, double x, text_str*& err);

/// Ei(x), for x > 0.
double math_func_ei(double x, text_str*& err);

} // namespace metrify
