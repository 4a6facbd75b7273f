#pragma once

// The Bessel functions of integer order, negative orders included, by recurrence from the orders 0 and 1.
//
// Source: the recurrences of Abramowitz and Stegun 9.1.27 and 9.6.26, upward for J (where |x| > n), Y and K,
// downward after J. C. P. Miller for the others; Press et al., Numerical Recipes, 6.5 and 6.6. Negative
// orders use the reflection formulas, 9.1.2 and 9.6.2, with the sine and cosine of the rounded |n| pi, whose
// error is visible where the second kind is much larger than the first.
//
// Accuracy: 6e-7 relative; where J or Y oscillates, relative to the amplitude. For I only if the start of its
// recurrence, at 2 (n + sqrt(40 n)), is above 4 sqrt|x|; for a larger x the result is that of the recurrence.
//
// Domain: as for the fits. A value beyond the range of doubles is an infinity or a not-a-number, one below
// it is 0.
//
// Time: at most one step for each order (two for I), and none if the result is known in advance.
//
// Error text, where NAME is the routine's name; the result is 0 then:
//   "ERROR:   order out of range in NAME().\n"   the order is -2147483648, which has no positive counterpart

#include "base/text_str.h"

#include <cstdint>

namespace metrify {

double math_func_bessj(std::int32_t n, double x, text_str*& err);
double math_func_bessy(std::int32_t n, double x, text_str*& err);
double math_func_bessi(std::int32_t n, double x, text_str*& err);
double math_func_bessk(std::int32_t n, double x, text_str*& err);

} // namespace metrify
