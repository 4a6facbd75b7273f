// I and K of real order. The ratio of I at nu + 1 and nu comes from a continued fraction; I is taken down to
// an order near 0 by recurrence, where K comes from Temme's series or from a second fraction and the
// Wronskian gives I; K is taken up again.
//
// The pair that is carried is a function at two neighbouring orders. Its derivative would do as well on
// paper, but for a small x it is a difference of two much larger numbers.

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

/// The first continued fraction, which comes to I at nu + 1 over I at nu. All its terms are positive, so that
/// nothing cancels here nor in what is made of it.
bool first_fraction(const reduced_order& order, double& ratio) {
    double d = 1.0 / order.term(order.whole + 1).sum();
    ratio = d;
    double tail = 0.0;
    for (int i = 2; i <= MAXIT; ++i) {
        const double b = order.term(order.whole + i).sum();
        const double c = b + tail;
        d = 1.0 / (b + d);
        tail = 1.0 / c;
        const double factor = c * d;
        ratio *= factor;
        if (std::fabs(factor - 1.0) < EPS)
            return true;
    }
    return false;
}

/// What the order mu comes to: K there and at mu + 1, and what I was multiplied by, which is from the
/// Wronskian. That is a sum of two products, both positive.
struct at_mu {
    double scale;
    neighbours k;
};

/// Temme's series, for x < XMIN.
bool series_at_mu(const reduced_order& order, const neighbours& i_mu, at_mu& result, text_str*& err) {
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
    result.k = {sum, sum1 * order.xi2};
    // Times x: K at mu + 1 may overflow.
    result.scale = 1.0 / (2.0 * i_mu.at * sum1 + i_mu.above * sum * order.x);
    return i <= MAXIT;
}

/// Steed's second fraction, for x >= XMIN.
bool fraction_at_mu(const reduced_order& order, const neighbours& i_mu, at_mu& result) {
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
    const double above = at * (order.mu + x + 0.5 - h) * order.xi;
    result.k = {at, above};
    result.scale = order.xi / (i_mu.at * above + i_mu.above * at);
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
    const neighbours top = {FPMIN, ratio * FPMIN};
    const auto [bottom, unit] = lowered(order, 1.0, top);
    at_mu low = {};
    if (x < XMIN) {
        if (!series_at_mu(order, bottom, low, err))
            return fail("ERROR: series failed to converge in math_func_bessik().\n");
    } else if (!fraction_at_mu(order, bottom, low)) {
        return fail("ERROR: cf2 failed to converge in math_func_bessik().\n");
    }
    i = top.at * low.scale / unit;
    i_prime = i * (nu * order.xi + ratio);
    const neighbours high = raised(order, 1.0, low.k);
    k = high.at;
    k_prime = nu * order.xi * high.at - high.above;
}

} // namespace metrify
