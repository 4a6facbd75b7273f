#include "numerics/linear/products.h"

namespace metrify {

namespace {

// element(i, j) is the factor of v[j] in out[i].
template <class Element>
void form_sums(Element element, vector_view<const double> v, long n, vector_view<double> out) {
    for (long i = 1; i < n; i += 2) {
        double first = 0.0;
        double second = 0.0;
        for (long j = 1; j <= n; ++j) {
            first += element(i, j) * v[j];
            second += element(i + 1, j) * v[j];
        }
        out[i] = first;
        out[i + 1] = second;
    }
    if (n % 2 == 0)
        return;
    double last = 0.0;
    for (long j = 1; j <= n; ++j)
        last += element(n, j) * v[j];
    out[n] = last;
}

} // namespace

void multiply(matrix_view<const double> m, vector_view<const double> v, long n, vector_view<double> out) {
    form_sums([m](long i, long j) { return m(i, j); }, v, n, out);
}

void multiply_transposed(matrix_view<const double> m, vector_view<const double> v, long n,
                         vector_view<double> out) {
    form_sums([m](long i, long j) { return m(j, i); }, v, n, out);
}

} // namespace metrify
