#pragma once

// The Airy functions and their derivatives, from the Bessel functions of the orders 1/3 and 2/3.
//
// Source: Abramowitz and Stegun, Handbook of Mathematical Functions, 10.4; Press et al., Numerical Recipes,
// 6.7.
//
// Accuracy: 1e-13 relative; where the functions oscillate and are below a tenth of the amplitude, 1e-14 of
// the amplitude.
//
// Domain: every x for which the Bessel functions of 2/3 |x|^(3/2) converge.
//
// Error texts: those of math_func_bessjy for x < 0, of math_func_bessik for x > 0, once for each of the two
// orders; the outputs are computed from the zeros that these return.

#include "base/text_str.h"

namespace metrify {

void math_func_airy(double x, double& ai, double& bi, double& ai_prime, double& bi_prime, text_str*& err);

} // namespace metrify
