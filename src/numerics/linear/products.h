#pragma once

// Products of a square matrix and a vector. Each sum is formed in the order of the elements, so that the
// results are those of the plain loops to the last bit; two sums at a time are one vector instruction.

#include "numerics/linear/views.h"

namespace metrify {

inline double square_sum(vector_view<const double> v, long n) {
    double sum = 0.0;
    for (long i = 1; i <= n; ++i)
        sum += v[i] * v[i];
    return sum;
}

/// out[i] is the sum of m(i, j) v[j] over all j.
void multiply(matrix_view<const double> m, vector_view<const double> v, long n, vector_view<double> out);

/// out[i] is the sum of m(j, i) v[j] over all j.
void multiply_transposed(matrix_view<const double> m, vector_view<const double> v, long n,
                         vector_view<double> out);

} // namespace metrify
