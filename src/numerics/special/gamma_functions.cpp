#include "numerics/special/gamma_functions.h"

#include "base/failure.h"

#include <cmath>

namespace metrify {

namespace {

// The limits of the series and the fractions. Intentional: single precision.
constexpr int ITMAX = 100;
constexpr int MAXIT = 100; // of the fraction of beta
constexpr double EPS = 3e-7;
constexpr double FPMIN = 1e-30;

double not_vanishing(double x) {
    return std::fabs(x) < FPMIN ? FPMIN : x;
}

/// The common factor of both incomplete gamma functions.
double power_and_exponential(double a, double x, double log_gamma) {
    return std::exp(-x + a * std::log(x) - log_gamma);
}

bool is_series_range(double a, double x) {
    return x < a + 1.0;
}

} // namespace

double math_func_gammln(double x, text_str*& err) {
    if (x <= 0.0)
        return numeric_failure(err, "ERROR: x must be > 0 in in routine math_func_gammln().\n");
    constexpr double coefficients[] = {76.18009172947146,  -86.50532032941677,    24.01409824083091,
                                       -1.231739572450155, 0.1208650973866179e-2, -0.5395239384953e-5};
    double shifted = x + 5.5;
    shifted -= (x + 0.5) * std::log(shifted);
    double series = 1.000000000190015;
    double y = x;
    for (const double coefficient : coefficients)
        series += coefficient / ++y;
    return -shifted + std::log(2.5066282746310007 * series / x);
}

void math_func_gser(double& value, double a, double x, double& log_gamma, text_str*& err) {
    log_gamma = math_func_gammln(a, err);
    value = 0.0;
    if (x < 0.0) {
        numeric_failure(err, "ERROR: x must be >= 0.0 in in routine math_func_gser().\n");
        return;
    }
    if (x == 0.0)
        return;
    double ap = a;
    double term = 1.0 / a;
    double sum = term;
    for (int n = 1; n <= ITMAX; ++n) {
        ++ap;
        term *= x / ap;
        sum += term;
        if (std::fabs(term) < std::fabs(sum) * EPS) {
            value = sum * power_and_exponential(a, x, log_gamma);
            return;
        }
    }
    numeric_failure(err, "ERROR: a too large, ITMAX too small routine math_func_gser().\n");
}

void math_func_gcf(double& value, double a, double x, double& log_gamma, text_str*& err) {
    log_gamma = math_func_gammln(a, err);
    double b = x + 1.0 - a;
    double c = 1.0 / FPMIN;
    double d = 1.0 / b;
    double h = d;
    for (int i = 1; i <= ITMAX; ++i) {
        const double an = -i * (i - a);
        b += 2.0;
        d = not_vanishing(an * d + b);
        c = not_vanishing(b + an / c);
        d = 1.0 / d;
        const double factor = d * c;
        h *= factor;
        if (std::fabs(factor - 1.0) < EPS) {
            value = power_and_exponential(a, x, log_gamma) * h;
            return;
        }
    }
    value = log_gamma =
        numeric_failure(err, "ERROR:  a too large, ITMAX too small in in routine math_func_gcf().\n");
}

double math_func_gammp(double a, double x, text_str*& err) {
    if (x < 0.0)
        return numeric_failure(err, "ERROR: x must be >= 0.0 in in routine math_func_gammp().\n");
    if (a <= 0.0)
        return numeric_failure(err, "ERROR: a must be > 0.0 in in routine math_func_gammp().\n");
    double value = 0.0;
    double log_gamma = 0.0;
    if (is_series_range(a, x)) {
        math_func_gser(value, a, x, log_gamma, err);
        return value;
    }
    math_func_gcf(value, a, x, log_gamma, err);
    return 1.0 - value;
}

double math_func_gammq(double a, double x, text_str*& err) {
    if (x < 0.0)
        return numeric_failure(err, "ERROR: x must be >= 0.0 in in routine math_func_gammq().\n");
    if (a <= 0.0)
        return numeric_failure(err, "ERROR: a must be > 0.0 in in routine math_func_gammq().\n");
    double value = 0.0;
    double log_gamma = 0.0;
    if (is_series_range(a, x)) {
        math_func_gser(value, a, x, log_gamma, err);
        return 1.0 - value;
    }
    math_func_gcf(value, a, x, log_gamma, err);
    return value;
}

double math_func_beta(double z, double w, text_str*& err) {
    const double first = math_func_gammln(z, err);
    const double second = math_func_gammln(w, err);
    return std::exp(first + second - math_func_gammln(z + w, err));
}

double math_func_betacf(double a, double b, double x, text_str*& err) {
    const double qab = a + b;
    const double qap = a + 1.0;
    const double qam = a - 1.0;
    double c = 1.0;
    double d = 1.0 / not_vanishing(1.0 - qab * x / qap);
    double h = d;
    const auto step = [&](double numerator) {
        d = not_vanishing(1.0 + numerator * d);
        c = not_vanishing(1.0 + numerator / c);
        d = 1.0 / d;
        h *= d * c;
    };
    for (int m = 1; m <= MAXIT; ++m) {
        const int m2 = 2 * m;
        step(m * (b - m) * x / ((qam + m2) * (a + m2)));
        step(-(a + m) * (qab + m) * x / ((a + m2) * (qap + m2)));
        if (std::fabs(d * c - 1.0) < EPS)
            return h;
    }
    return numeric_failure(err, "ERROR:  a or b too big or MAXIT too small in routine math_func_betacf().\n");
}

double math_func_betai(double a, double b, double x, text_str*& err) {
    if (x < 0.0)
        return numeric_failure(err, "ERROR:  x must be >= 0 in routine math_func_betai().\n");
    if (x > 1.0)
        return numeric_failure(err, "ERROR:  x must be <= 1 in routine math_func_betai().\n");
    double factor = 0.0; // at both ends, where the fraction is evaluated nevertheless
    if (x != 0.0 && x != 1.0) {
        const double sum = math_func_gammln(a + b, err);
        const double first = math_func_gammln(a, err);
        factor = std::exp(sum - first - math_func_gammln(b, err) + a * std::log(x) + b * std::log(1.0 - x));
    }
    if (x < (a + 1.0) / (a + b + 2.0))
        return factor * math_func_betacf(a, b, x, err) / a;
    return 1.0 - factor * math_func_betacf(b, a, 1.0 - x, err) / b;
}

} // namespace metrify
