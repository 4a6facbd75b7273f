// I and K of real order. The ratio I'/I comes from a continued fraction at the order nu; I is taken down to
// an order near 0 by recurrence, where K comes from Temme's series or from a second fraction and the
// Wronskian gives I; K is taken up again.

#include "numerics/bessel_real.h"
#include "numerics/bessel_steps.h"
#include "numerics/failure.h"
#include "numerics/trigonometry.h"

#include <cstdint>
#include <numbers>

namespace metrify {

namespace {

using namespace bessel;
using std::numbers::pi;

struct ratio_pair {
    double value, prime;
};

/// The first continued fraction, I'/I at the order nu.
bool first_fraction(const reduced_order& order, double& ratio) {
    const double start = order.nu * order.xi;
    ratio = start < FPMIN ? FPMIN : start;
    double b = order.xi2 * order.nu;
    double d = 0.0;
    double c = ratio;
    for (int i = 1; i <= MAXIT; ++i) {
        b += order.xi2;
        d = 1.0 / (b + d);
        c = b + 1.0 / c;
        const double factor = c * d;
        ratio *= factor;
        if (std::fabs(factor - 1.0) < EPS)
            return true;
    }
    return false;
}

/// From the order nu down to mu.
ratio_pair lowered(const reduced_order& order, ratio_pair i) {
    double factor = order.nu * order.xi;
    for (auto l = static_cast<std::int64_t>(order.steps); l >= 1; --l) {
        const double value = factor * i.value + i.prime;
        factor -= order.xi;
        i = {value, factor * value + i.value};
        // Beyond an overflow the ratio of the two is no number whatever follows.
        if (!std::isfinite(i.value) && !std::isfinite(i.prime))
            break;
    }
    return i;
}

/// Temme's series for K at mu and mu + 1, for x < XMIN.
bool series_at_mu(const reduced_order& order, neighbours& k, text_str*& err) {
    const double half = 0.5 * order.x;
    const double mu = order.mu;
    const double pi_mu = pi * mu;
    const double log_term = -std::log(half);
    const double power = mu * log_term;
    const double fact = or_limit(pi_mu, pi_mu / sine(pi_mu));
    const double fact2 = or_limit(power, std::sinh(power) / power);
    const gamma_factors gamma = gamma_factors_of(mu, err);
    double ff = fact * (gamma.gam1 * std::cosh(power) + gamma.gam2 * fact2 * log_term);
    const double e = std::exp(power);
    double p = 0.5 * e / gamma.plus;
    double q = 0.5 / (e * gamma.minus);
    const double d = half * half;
    double c = 1.0;
    double sum = ff;
    double sum1 = p;
    int i = 1;
    for (; i <= MAXIT; ++i) {
        ff = (i * ff + p + q) / (i * i - order.mu2);
        c *= d / i;
        p /= i - mu;
        q /= i + mu;
        const double term = c * ff;
        sum += term;
        sum1 += c * (p - i * ff);
        if (std::fabs(term) < std::fabs(sum) * EPS)
            break;
    }
    k = {sum, sum1 * order.xi2};
    return i <= MAXIT;
}

/// Steed's second fraction for K at mu and mu + 1, for x >= XMIN.
bool fraction_at_mu(const reduced_order& order, neighbours& k) {
    const double x = order.x;
    double b = 2.0 * (1.0 + x);
    double d = 1.0 / b;
    double step = d;
    double h = d;
    double q1 = 0.0;
    double q2 = 1.0;
    const double a1 = 0.25 - order.mu2;
    double q = a1;
    double c = a1;
    double a = -a1;
    double s = 1.0 + q * step;
    int i = 2;
    for (; i <= MAXIT; ++i) {
        a -= 2 * (i - 1);
        c = -a * c / i;
        const double q_new = (q1 - b * q2) / a;
        q1 = q2;
        q2 = q_new;
        q += c * q_new;
        b += 2.0;
        d = 1.0 / (b + a * d);
        step = (b * d - 1.0) * step;
        h += step;
        const double term = q * step;
        s += term;
        if (std::fabs(term / s) < EPS)
            break;
    }
    h = a1 * h;
    const double at = std::sqrt(pi / (2.0 * x)) * std::exp(-x) / s;
    k = {at, at * (order.mu + x + 0.5 - h) * order.xi};
    return i <= MAXIT;
}

} // namespace

void math_func_bessik(double x, double nu, double& i, double& k, double& i_prime, double& k_prime,
                      text_str*& err) {
    const auto fail = [&](const char* text) { i = k = i_prime = k_prime = numeric_failure(err, text); };
    if (x <= 0.0)
        return fail("ERROR:   x must be > 0 in math_func_bessik().\n");
    if (nu < 0.0)
        return fail("ERROR:   nu must be >= 0 in math_func_bessik().\n");
    const reduced_order order(x, nu, nu + 0.5);
    double ratio = 0.0;
    if (!first_fraction(order, ratio))
        return fail("ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
    const ratio_pair top = {FPMIN, ratio * FPMIN};
    const ratio_pair bottom = lowered(order, top);
    neighbours low = {};
    if (x < XMIN) {
        if (!series_at_mu(order, low, err))
            return fail("ERROR: series failed to converge in math_func_bessik().\n");
    } else if (!fraction_at_mu(order, low)) {
        return fail("ERROR: cf2 failed to converge in math_func_bessik().\n");
    }
    const double k_mu_prime = order.mu * order.xi * low.at - low.above;
    const double i_mu = order.xi / (bottom.prime / bottom.value * low.at - k_mu_prime);
    i = i_mu * top.value / bottom.value;
    i_prime = i_mu * top.prime / bottom.value;
    const neighbours high = raised(order, 1.0, low);
    k = high.at;
    k_prime = nu * order.xi * high.at - high.above;
}

} // namespace metrify
