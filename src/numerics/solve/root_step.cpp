#include "numerics/solve/root_step.h"

#include "numerics/linear/products.h"
#include "numerics/scalar_helpers.h"

#include <cmath>

namespace metrify {

namespace {

constexpr double STPMX = 100.0;
constexpr double EPS = 1e-6;
constexpr double ALF = 1e-4;

double norm(vector_view<const double> v, long n) {
    return std::sqrt(square_sum(v, n));
}

void limit_length(vector_view<double> p, long n, double stpmax) {
    const double whole = norm(p, n);
    if (!(whole > stpmax))
        return;
    for (long i = 1; i <= n; ++i)
        p[i] *= stpmax / whole;
}

double least_fraction(vector_view<const double> p, vector_view<const double> xold, long n) {
    double largest = 0.0;
    for (long i = 1; i <= n; ++i)
        largest = larger(std::fabs(p[i]) / larger(std::fabs(xold[i]), 1.0), largest);
    return TOLX / largest;
}

/// The half square sum at a fraction of the step.
struct trial {
    double alam, f;
};

// The minimum of the cubic through the start, with its slope, and the last two trials, but at most half the
// last fraction. False if roundoff makes the discriminant negative.
bool cubic_fraction(const trial& last, const trial& before, double fold, double slope, double& fraction) {
    const double rhs1 = last.f - fold - last.alam * slope;
    const double rhs2 = before.f - fold - before.alam * slope;
    const double difference = last.alam - before.alam;
    const double last_squared = last.alam * last.alam;
    const double before_squared = before.alam * before.alam;
    const double a = (rhs1 / last_squared - rhs2 / before_squared) / difference;
    const double b = (-before.alam * rhs1 / last_squared + last.alam * rhs2 / before_squared) / difference;
    if (a == 0.0) {
        fraction = -slope / (2.0 * b);
    } else {
        const double disc = b * b - 3.0 * a * slope;
        if (disc < 0.0)
            return false;
        fraction = (-b + std::sqrt(disc)) / (3.0 * a);
    }
    if (fraction > 0.5 * last.alam)
        fraction = 0.5 * last.alam;
    return true;
}

} // namespace

double half_square_sum(vector_view<const double> fvec, long n) {
    return 0.5 * square_sum(fvec, n);
}

double largest_magnitude(vector_view<const double> fvec, long n) {
    double largest = 0.0;
    for (long i = 1; i <= n; ++i)
        largest = larger(std::fabs(fvec[i]), largest);
    return largest;
}

double longest_step(vector_view<const double> x, long n) {
    return STPMX * larger(norm(x, n), static_cast<double>(n));
}

double relative_change(vector_view<const double> x, vector_view<const double> xold, long n) {
    double largest = 0.0;
    for (long i = 1; i <= n; ++i)
        largest = larger(std::fabs(x[i] - xold[i]) / larger(std::fabs(x[i]), 1.0), largest);
    return largest;
}

double relative_gradient(vector_view<const double> g, vector_view<const double> x, double f, long n) {
    const double size = larger(f, 0.5 * static_cast<double>(n));
    double largest = 0.0;
    for (long i = 1; i <= n; ++i)
        largest = larger(std::fabs(g[i]) * larger(std::fabs(x[i]), 1.0) / size, largest);
    return largest;
}

void fdjac(bound_function& function, long n, vector_view<double> x, vector_view<const double> fvec,
           matrix_view<double> df, text_str*& err) {
    view_memory memory(n, 1, 0);
    const vector_view<double> moved = memory.vector();
    for (long j = 1; j <= n; ++j) {
        const double plain = x[j];
        double h = EPS * std::fabs(plain);
        if (h == 0.0)
            h = EPS;
        x[j] = plain + h;
        h = x[j] - plain; // the exact difference of the stored numbers
        function.evaluate_function(x.data(), moved.data(), err);
        if (!str_is_empty(err))
            return;
        x[j] = plain;
        for (long i = 1; i <= n; ++i)
            df(i, j) = (moved[i] - fvec[i]) / h;
    }
}

void lnsrch(bound_function& function, long n, vector_view<const double> xold, double fold,
            vector_view<const double> g, vector_view<double> p, vector_view<double> x, double& f,
            double stpmax, std::uint32_t& check, vector_view<double> fvec, text_str*& err) {
    check = 1;
    limit_length(p, n, stpmax);
    double slope = 0.0;
    for (long i = 1; i <= n; ++i)
        slope += g[i] * p[i];
    const double alamin = least_fraction(p, xold, n);
    double alam = 1.0;
    trial before = {0.0, 0.0};
    for (bool first = true;; first = false) {
        for (long i = 1; i <= n; ++i)
            x[i] = xold[i] + alam * p[i];
        function.evaluate_function(x.data(), fvec.data(), err);
        if (!str_is_empty(err))
            return;
        f = half_square_sum(fvec, n);
        // An infinite or invalid step has no least fraction: stop when the fraction underflows to 0.
        if (alam < alamin || alam == 0.0) {
            for (long i = 1; i <= n; ++i)
                x[i] = xold[i];
            check = 0;
            return;
        }
        if (f <= fold + ALF * alam * slope)
            return;
        const trial last = {alam, f};
        double fraction = -slope / (2.0 * (f - fold - slope)); // the minimum of the parabola
        if (!first && !cubic_fraction(last, before, fold, slope, fraction)) {
            err = str_append_text(&err, "ERROR:  Roundoff problem in lnsrch.\n");
            return;
        }
        before = last;
        alam = larger(fraction, 0.1 * alam);
    }
}

} // namespace metrify
