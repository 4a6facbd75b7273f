#pragma once

// The sum of a Chebyshev series.
//
// Source: C. W. Clenshaw's recurrence (Math. Tables Aids Comp. 9, 1955); Press et al., Numerical
// Recipes, 5.8.
//
// Accuracy: rounding.
//
// Error text, with the result 0:
//   "ERROR:  x not in range in routine math_func_bes_chebev().\n"   x is outside a to b

#include "base/text_str.h"

namespace metrify {

/// The first count terms of the series on the interval a to b, at x. The constant term is halved.
double math_func_bes_chebev(double a, double b, const double* coefficients, int count, double x,
                            text_str*& err);

} // namespace metrify
