#include "numerics/special/exponential_integrals.h"

#include "base/failure.h"

#include <cmath>

namespace metrify {

namespace {

constexpr int MAXIT = 100;
constexpr double EULER = 0.5772156649015329;
constexpr double FPMIN = 1e-30;

// The tolerance of E_n's series and fraction. Intentional: single precision.
constexpr double expint_EPS = 3e-7;

/// E_n by its continued fraction, for x > 1.
double expint_fraction(std::int32_t n, double x, text_str*& err) {
    double b = x + n;
    double c = 9.999999999999999e29; // 1/FPMIN
    double d = 1.0 / b;
    double h = d;
    for (int i = 1; i <= MAXIT; ++i) {
        const double a = -i * (n - 1.0 + i);
        b += 2.0;
        d = 1.0 / (a * d + b);
        c = b + a / c;
        const double factor = c * d;
        h *= factor;
        if (std::fabs(factor - 1.0) < expint_EPS)
            return h * std::exp(-x);
    }
    return numeric_failure(err, "ERROR:  continued fraction failed in routine math_func_expint().\n");
}

/// E_n by its series, for 0 < x <= 1.
double expint_series(std::int32_t n, double x, text_str*& err) {
    const std::int32_t before = n - 1;
    double sum = before != 0 ? 1.0 / before : -std::log(x) - EULER;
    double fact = 1.0;
    for (int i = 1; i <= MAXIT; ++i) {
        fact *= -x / i;
        double term = 0.0;
        if (i != before) {
            term = -fact / (i - before);
        } else {
            double psi = -EULER;
            for (int k = 1; k <= before; ++k)
                psi += 1.0 / k;
            term = fact * (-std::log(x) + psi);
        }
        sum += term;
        if (std::fabs(term) < std::fabs(sum) * expint_EPS)
            return sum;
    }
    return numeric_failure(err, "ERROR:  series failed in routine math_func_expint().\n");
}

constexpr double ei_EPS = 6e-8;

double ei_series(double x, text_str*& err) {
    double sum = 0.0;
    double fact = 1.0;
    for (int k = 1; k <= MAXIT; ++k) {
        fact *= x / k;
        const double term = fact / k;
        sum += term;
        if (term < ei_EPS * sum)
            return sum + std::log(x) + EULER;
    }
    return numeric_failure(err, "ERROR:  Series failed to converge in routine math_func_ei().\n");
}

/// The asymptotic sum ends where its terms begin to grow.
double ei_asymptotic(double x) {
    double sum = 0.0;
    double term = 1.0;
    for (int k = 1; k <= MAXIT; ++k) {
        const double former = term;
        term *= k / x;
        if (term < ei_EPS)
            break;
        if (!(term < former)) {
            sum -= former;
            break;
        }
        sum += term;
    }
    return std::exp(x) * (1.0 + sum) / x;
}

} // namespace

double math_func_expint(std::int32_t n, double x, text_str*& err) {
    if (n < 0)
        return numeric_failure(err, "ERROR:  n must be >= 0 in routine math_func_expint().\n");
    if (x < 0.0)
        return numeric_failure(err, "ERROR:  x must be >= 0 in routine math_func_expint().\n");
    if (x == 0.0 && (n == 0 || n == 1))
        return numeric_failure(err, "ERROR:  arg error routine math_func_expint().\n");
    if (n == 0)
        return std::exp(-x) / x;
    if (x == 0.0)
        return 1.0 / (n - 1);
    return x > 1.0 ? expint_fraction(n, x, err) : expint_series(n, x, err);
}

double math_func_ei(double x, text_str*& err) {
    if (x <= 0.0)
        return numeric_failure(err, "ERROR:  x must be > 0 in routine math_func_ei().\n");
    if (x < FPMIN)
        return std::log(x) + EULER;
    if (x <= -std::log(ei_EPS))
        return ei_series(x, err);
    return ei_asymptotic(x);
}

} // namespace metrify
