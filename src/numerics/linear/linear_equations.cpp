#include "numerics/linear/linear_equations.h"

#include "numerics/scalar_helpers.h"

#include <cmath>
#include <utility>

namespace metrify {

namespace {

constexpr double TINY = 1e-20;

// The inverse of the largest magnitude in each row, for implicit pivoting. False if a row is zero.
bool find_row_scales(const double_matrix& a, long n, double_vector& scales) {
    for (long i = 1; i <= n; ++i) {
        double largest = 0.0;
        for (long j = 1; j <= n; ++j)
            largest = larger(std::fabs(a(i, j)), largest);
        if (largest == 0.0)
            return false;
        scales[i] = 1.0 / largest;
    }
    return true;
}

// a(i, j) minus the product of the factors' first `terms` elements of row i and column j.
double remainder(const double_matrix& a, long i, long j, long terms) {
    double sum = a(i, j);
    for (long k = 1; k <= terms; ++k)
        sum -= a(i, k) * a(k, j);
    return sum;
}

void exchange_rows(double_matrix& a, long n, long i, long k) {
    for (long j = 1; j <= n; ++j)
        std::swap(a(i, j), a(k, j));
}

// The reflection that clears column k below the diagonal, applied to the columns after it.
void reflect_column(double_matrix& a, long n, long k, double scale, double_vector& c, double_vector& d) {
    double sum = 0.0;
    for (long i = k; i <= n; ++i) {
        a(i, k) /= scale;
        sum += square(a(i, k));
    }
    const double sigma = with_sign_of(std::sqrt(sum), a(k, k));
    a(k, k) += sigma;
    c[k] = sigma * a(k, k);
    d[k] = -scale * sigma;
    for (long j = k + 1; j <= n; ++j) {
        double product = 0.0;
        for (long i = k; i <= n; ++i)
            product += a(i, k) * a(i, j);
        const double tau = product / c[k];
        for (long i = k; i <= n; ++i)
            a(i, j) -= tau * a(i, k);
    }
}

// The length of (a, b), without intermediate overflow.
double length(double a, double b) {
    const double size_a = std::fabs(a);
    const double size_b = std::fabs(b);
    if (size_a == 0.0)
        return size_b;
    return size_a > size_b ? size_a * std::sqrt(1.0 + square(b / a))
                           : size_b * std::sqrt(1.0 + square(a / b));
}

void rotate_rows(double_matrix& m, long i, long from, long n, double c, double s) {
    for (long j = from; j <= n; ++j) {
        const double y = m(i, j);
        const double w = m(i + 1, j);
        m(i, j) = c * y - s * w;
        m(i + 1, j) = s * y + c * w;
    }
}

} // namespace

void ludcmp(double_matrix& a, long n, int_vector& indx, double& d, text_str*& err) {
    double_vector scales = dvector(1, n);
    d = 1.0;
    if (!find_row_scales(a, n, scales)) {
        err = str_append_text(&err, "ERROR:  Singular matrix in routine ludcmp.\n");
        return;
    }
    for (long j = 1; j <= n; ++j) {
        for (long i = 1; i < j; ++i)
            a(i, j) = remainder(a, i, j, i - 1);
        double largest = 0.0;
        long pivot = j;
        for (long i = j; i <= n; ++i) {
            a(i, j) = remainder(a, i, j, j - 1);
            const double scaled = scales[i] * std::fabs(a(i, j));
            if (scaled >= largest) {
                largest = scaled;
                pivot = i;
            }
        }
        if (pivot != j) {
            exchange_rows(a, n, pivot, j);
            d = -d;
            scales[pivot] = scales[j];
        }
        indx[j] = static_cast<std::int32_t>(pivot);
        if (a(j, j) == 0.0)
            a(j, j) = TINY;
        const double inverse = 1.0 / a(j, j);
        for (long i = j + 1; i <= n; ++i)
            a(i, j) *= inverse;
    }
}

void lubksb(const double_matrix& a, long n, const int_vector& indx, double_vector& b) {
    long first_nonzero = 0;
    for (long i = 1; i <= n; ++i) {
        double sum = b[indx[i]];
        b[indx[i]] = b[i];
        if (first_nonzero != 0)
            for (long j = first_nonzero; j < i; ++j)
                sum -= a(i, j) * b[j];
        else if (sum != 0.0)
            first_nonzero = i;
        b[i] = sum;
    }
    for (long i = n; i >= 1; --i) {
        double sum = b[i];
        for (long j = i + 1; j <= n; ++j)
            sum -= a(i, j) * b[j];
        b[i] = sum / a(i, i);
    }
}

void qrdcmp(double_matrix& a, long n, double_vector& c, double_vector& d, bool& sing) {
    sing = false;
    for (long k = 1; k < n; ++k) {
        double scale = 0.0;
        for (long i = k; i <= n; ++i)
            scale = larger(scale, std::fabs(a(i, k)));
        if (scale == 0.0) {
            sing = true;
            c[k] = 0.0;
            d[k] = 0.0;
        } else {
            reflect_column(a, n, k, scale, c, d);
        }
    }
    d[n] = a(n, n);
    if (d[n] == 0.0)
        sing = true;
}

void qrupdt(double_matrix& r, double_matrix& qt, long n, double_vector& u, const double_vector& v) {
    long last = n;
    while (last > 1 && u[last] == 0.0)
        --last;
    // Rotations, from the last row up, make u a multiple of the first unit vector.
    for (long i = last - 1; i >= 1; --i) {
        rotate(r, qt, n, i, u[i], -u[i + 1]);
        u[i] = length(u[i], u[i + 1]);
    }
    for (long j = 1; j <= n; ++j)
        r(1, j) += u[1] * v[j];
    for (long i = 1; i < last; ++i)
        rotate(r, qt, n, i, r(i, i), -r(i + 1, i));
}

void rotate(double_matrix& r, double_matrix& qt, long n, long i, double a, double b) {
    double c = 0.0;
    double s = 0.0;
    if (a == 0.0) {
        s = b >= 0.0 ? 1.0 : -1.0;
    } else if (std::fabs(a) > std::fabs(b)) {
        const double ratio = b / a;
        c = with_sign_of(1.0 / std::sqrt(1.0 + square(ratio)), a);
        s = ratio * c;
    } else {
        const double ratio = a / b;
        s = with_sign_of(1.0 / std::sqrt(1.0 + square(ratio)), b);
        c = ratio * s;
    }
    rotate_rows(r, i, i, n, c, s);
    rotate_rows(qt, i, 1, n, c, s);
}

void rsolv(const double_matrix& a, long n, const double_vector& d, double_vector& b) {
    for (long i = n; i >= 1; --i) {
        double sum = 0.0;
        for (long j = i + 1; j <= n; ++j)
            sum += a(i, j) * b[j];
        b[i] = (b[i] - sum) / d[i];
    }
}

} // namespace metrify
