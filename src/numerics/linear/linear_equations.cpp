#include "numerics/linear/linear_equations.h"

#include "base/interruption.h"
#include "numerics/scalar_helpers.h"

#include <cmath>
#include <utility>

namespace metrify {

namespace {

constexpr double TINY = 1e-20;

// The inverse of the largest magnitude in each row, for implicit pivoting. False if a row is zero.
bool find_row_scales(matrix_view<const double> a, long n, vector_view<double> scales) {
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
double remainder(matrix_view<const double> a, long i, long j, long terms) {
    double sum = a(i, j);
    for (long k = 1; k <= terms; ++k)
        sum -= a(i, k) * a(k, j);
    return sum;
}

void exchange_rows(matrix_view<double> a, long n, long i, long k) {
    for (long j = 1; j <= n; ++j)
        std::swap(a(i, j), a(k, j));
}

// The reflection that clears column k below the diagonal, applied to the columns after it.
void reflect_column(matrix_view<double> a, long n, long k, double scale, vector_view<double> c,
                    vector_view<double> d) {
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

/// The cosine and the sine of a rotation, and the length of the vector that it is made for.
struct rotation {
    double c, s, length;
};

// The rotation that turns (a, b) into the first axis, without intermediate overflow. Its angle and the length
// need the same quotient and root.
rotation rotation_of(double a, double b) {
    const double size_a = std::fabs(a);
    const double size_b = std::fabs(b);
    if (a == 0.0)
        return {0.0, b >= 0.0 ? 1.0 : -1.0, size_b};
    if (size_a > size_b) {
        const double ratio = b / a;
        const double root = std::sqrt(1.0 + square(ratio));
        const double c = with_sign_of(1.0 / root, a);
        return {c, ratio * c, size_a * root};
    }
    const double ratio = a / b;
    const double root = std::sqrt(1.0 + square(ratio));
    const double s = with_sign_of(1.0 / root, b);
    return {ratio * s, s, size_b * root};
}

// Two columns at a time, which are one vector instruction each.
void rotate_rows(vector_view<double> upper, vector_view<double> lower, long from, long n,
                 const rotation& by) {
    const double c = by.c;
    const double s = by.s;
    long j = from;
    for (; j < n; j += 2) {
        const double y[] = {upper[j], upper[j + 1]};
        const double w[] = {lower[j], lower[j + 1]};
        upper[j] = c * y[0] - s * w[0];
        upper[j + 1] = c * y[1] - s * w[1];
        lower[j] = s * y[0] + c * w[0];
        lower[j + 1] = s * y[1] + c * w[1];
    }
    if (j == n) {
        const double y = upper[j];
        const double w = lower[j];
        upper[j] = c * y - s * w;
        lower[j] = s * y + c * w;
    }
}

// Rotates rows i and i + 1, of which those of r are 0 before column i, by the angle that turns (a, b) into
// the first axis. Returns the length of (a, b).
double rotate_factors(matrix_view<double> r, matrix_view<double> qt, long n, long i, double a, double b) {
    const rotation by = rotation_of(a, b);
    const bool are_side_by_side = &r(i, n + 1) == &qt(i, 1);
    rotate_rows(r.row(i), r.row(i + 1), i, are_side_by_side ? 2 * n : n, by);
    if (!are_side_by_side)
        rotate_rows(qt.row(i), qt.row(i + 1), 1, n, by);
    return by.length;
}

} // namespace

void ludcmp(matrix_view<double> a, long n, vector_view<std::int32_t> indx, double& d, text_str*& err) {
    double_vector scales = dvector(1, n);
    d = 1.0;
    if (!find_row_scales(a, n, scales)) {
        err = str_append_text(&err, "ERROR:  Singular matrix in routine ludcmp.\n");
        return;
    }
    for (long j = 1; j <= n; ++j) {
        if (is_interrupted_after(n * n)) {
            append(err, interruption_message);
            return;
        }
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

void lubksb(matrix_view<const double> a, long n, vector_view<const std::int32_t> indx,
            vector_view<double> b) {
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

void qrdcmp(matrix_view<double> a, long n, vector_view<double> c, vector_view<double> d, bool& sing) {
    sing = false;
    for (long k = 1; k < n; ++k) {
        if (is_interrupted_after(n * n)) {
            sing = true;
            return;
        }
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

void qrupdt(matrix_view<double> r, matrix_view<double> qt, long n, vector_view<double> u,
            vector_view<const double> v) {
    long last = n;
    while (last > 1 && u[last] == 0.0)
        --last;
    // Rotations, from the last row up, make u a multiple of the first unit vector.
    for (long i = last - 1; i >= 1; --i)
        u[i] = rotate_factors(r, qt, n, i, u[i], -u[i + 1]);
    const vector_view<double> first = r.row(1);
    for (long j = 1; j <= n; ++j)
        first[j] += u[1] * v[j];
    for (long i = 1; i < last; ++i)
        rotate_factors(r, qt, n, i, r(i, i), -r(i + 1, i));
}

void rotate(matrix_view<double> r, matrix_view<double> qt, long n, long i, double a, double b) {
    rotate_factors(r, qt, n, i, a, b);
}

void rsolv(matrix_view<const double> a, long n, vector_view<const double> d, vector_view<double> b) {
    for (long i = n; i >= 1; --i) {
        const vector_view<const double> row = a.row(i);
        double sum = 0.0;
        for (long j = i + 1; j <= n; ++j)
            sum += row[j] * b[j];
        b[i] = (b[i] - sum) / d[i];
    }
}

} // namespace metrify
