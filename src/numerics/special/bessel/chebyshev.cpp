#include "numerics/special/bessel/chebyshev.h"

#include "base/failure.h"

namespace metrify {

double math_func_bes_chebev(double a, double b, const double* coefficients, int count, double x,
                            text_str*& err) {
    if ((x - a) * (x - b) > 0.0)
        return numeric_failure(err, "ERROR:  x not in range in routine math_func_bes_chebev().\n");
    const double y = (2.0 * x - a - b) / (b - a);
    const double y2 = 2.0 * y;
    double d = 0.0;
    double dd = 0.0;
    for (int j = count - 1; j >= 1; --j) {
        const double former = d;
        d = y2 * d - dd + coefficients[j];
        dd = former;
    }
    return y * d - dd + 0.5 * coefficients[0];
}

} // namespace metrify
