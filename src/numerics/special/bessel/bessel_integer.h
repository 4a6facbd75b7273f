#pragma once

// The Bessel functions of integer order, negative orders included, by recurrence from the orders 0 and 1.
//
// Source: the recurrences of Abramowitz and Stegun 9.1.27 and 9.6.26, upward for J (where |x| > n), Y and K,
// downward after J. C. P. Miller for the others; Press et al., Numerical Recipes, 6.5 and 6.6. A negative
// order goes through the reflection formulas, 9.1.2 and 9.6.2, with the sine and cosine of |n| pi as they
// come out in doubles: where the second kind is large beside the first that shows.
//
// Accuracy: 6e-7 relative, where J or Y oscillates relative to the amplitude. I only where the start of its
// recurrence, at 2 (n + sqrt(40 n)), lies above 4 sqrt|x|; for a larger x it is what the recurrence gives.
//
// Domain: as for the fits. A value beyond the range of doubles comes out as an infinity or a not-a-number,
// one below it as 0.
//
// Time: at most one step for each order passed (two for I), and none where the result is certain before.
//
// Error text, where NAME is the routine's own name; the result is 0 then:
//   "ERROR:   order out of range in NAME().\n"   the order is -2147483648, which has no positive counterpart

#include "base/text_str.h"

#include <cstdint>

namespace metrify {

double math_func_bessj(std::int32_t n, double x, text_str*& err);
double math_func_bessy(std::int32_t n, double x, text_str*& err);
double math_func_bessi(std::int32_t n, double x, text_str*& err);
double math_func_bessk(std::int32_t n, double x, text_str*& err);

} // namespace metrify
