// J and Y of real order. The ratio of J at nu + 1 and nu comes from a continued fraction; J is recurred down
// to an order near 0, where Y and the size of J come from Temme's series or from a second fraction; Y is
// recurred up again.

#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/bessel/bessel_real_order.h"
#include "numerics/special/trigonometry.h"

#include <numbers>

namespace metrify {

namespace {

using namespace bessel;
using std::numbers::pi;

double not_vanishing(double x) {
    return std::fabs(x) < FPMIN ? FPMIN : x;
}

/// The first continued fraction, the ratio of J at nu + 1 and nu, and the sign of J at nu.
bool first_fraction(const reduced_order& order, double& ratio, double& sign) {
    double d = 1.0 / order.term(order.whole + 1).sum();
    ratio = d;
    sign = 1.0;
    double tail = 0.0;
    for (int i = 2; i <= MAXIT; ++i) {
        const auto [b, rest] = order.term(order.whole + i);
        const double c = not_vanishing(b - tail + rest);
        d = 1.0 / not_vanishing(b - d + rest);
        tail = 1.0 / c;
        const double factor = c * d;
        ratio *= factor;
        if (d < 0.0)
            sign = -sign;
        if (std::fabs(factor - 1.0) < EPS)
            return true;
    }
    return false;
}

/// The results at the order mu: Y there and at mu + 1, and the factor of J.
struct at_mu {
    double scale;
    neighbours y;
};

/// Temme's series for Y, and the size of J from the Wronskian; for x < XMIN.
bool series_at_mu(const reduced_order& order, const neighbours& j, at_mu& result, text_str*& err) {
    temme_series series(order, err);
    const double half = 0.5 * order.x;
    const double pi_mu_half = 0.5 * pi * order.mu;
    const double quotient = or_limit(pi_mu_half, sine(pi_mu_half) / pi_mu_half);
    const double r = pi * pi_mu_half * quotient * quotient;
    const double d = -half * half;
    double c = 2.0 / pi;
    double sum = c * (series.f + r * series.q);
    double sum1 = c * series.p;
    int i = 1;
    for (; i <= MAXIT; ++i) {
        series.advance(i);
        c *= d / i;
        const double term = c * (series.f + r * series.q);
        sum += term;
        sum1 += c * series.p - i * term;
        if (std::fabs(term) < (1.0 + std::fabs(sum)) * EPS)
            break;
    }
    result.y = {-sum, -sum1 * order.xi2};
    // The Wronskian, times x/2: Y at mu + 1 may overflow.
    result.scale = 1.0 / (pi * (j.at * sum1 - j.above * sum * half));
    return i <= MAXIT;
}

/// A complex number with the operations of the second fraction.
struct complex_pair {
    double re, im;
};
complex_pair product(const complex_pair& a, const complex_pair& b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
complex_pair not_vanishing(const complex_pair& z) {
    return std::fabs(z.re) + std::fabs(z.im) < FPMIN ? complex_pair{FPMIN, z.im} : z;
}

/// The second continued fraction, p + iq, for x >= XMIN.
bool second_fraction(const reduced_order& order, complex_pair& pq) {
    double a = 0.25 - order.mu2;
    double p = -0.5 * order.xi;
    double q = 1.0;
    const double br = 2.0 * order.x;
    double bi = 2.0;
    double fact = a * order.xi / (p * p + q * q);
    complex_pair c = {br + q * fact, bi + p * fact};
    double den = br * br + bi * bi;
    complex_pair d = {br / den, -bi / den};
    complex_pair factor = product(c, d);
    pq = product({p, q}, factor);
    for (int i = 2; i <= MAXIT; ++i) {
        a += 2 * (i - 1);
        bi += 2.0;
        d = not_vanishing({a * d.re + br, a * d.im + bi});
        fact = a / (c.re * c.re + c.im * c.im);
        c = not_vanishing({br + c.re * fact, bi - c.im * fact});
        den = d.re * d.re + d.im * d.im;
        d = {d.re / den, -d.im / den};
        factor = product(c, d);
        pq = product(pq, factor);
        if (std::fabs(factor.re - 1.0) + std::fabs(factor.im) < EPS)
            return true;
    }
    return false;
}

/// Y and the size of J from both fractions; for x from XMIN on.
bool fractions_at_mu(const reduced_order& order, const neighbours& j, at_mu& result) {
    complex_pair pq;
    if (!second_fraction(order, pq))
        return false;
    const auto [p, q] = pq;
    const double j_prime = order.mu * order.xi * j.at - j.above;
    const double u = p * j.at - j_prime;
    const double v = q * j.at;
    result.scale = std::sqrt(order.xi2 / pi * q / (u * u + v * v));
    const double y = u / q * result.scale;
    const double y_prime = p * y + v * result.scale;
    result.y = {y, order.mu * order.xi * y - y_prime};
    return true;
}

} // namespace

void math_func_bessjy(double x, double nu, double& j, double& y, double& j_prime, double& y_prime,
                      text_str*& err) {
    const auto fail = [&](failure reason) {
        j = y = j_prime = y_prime = report_failure(reason, "math_func_bessjy", err);
    };
    if (x <= 0.0)
        return fail(failure::x_not_positive);
    if (nu < 0.0)
        return fail(failure::order_negative);
    const reduced_order order(x, nu, x < XMIN ? nu + 0.5 : nu - x + 1.5);
    double ratio = 0.0;
    double sign = 1.0;
    if (!first_fraction(order, ratio, sign))
        return fail(failure::x_too_large);
    const neighbours top = {sign * FPMIN, ratio * sign * FPMIN};
    const auto [bottom, unit] = recur_down(order, -1.0, top);
    at_mu low = {};
    if (x < XMIN) {
        if (!series_at_mu(order, bottom, low, err))
            return fail(failure::series);
    } else if (!fractions_at_mu(order, bottom, low)) {
        return fail(failure::second_fraction);
    }
    const double scale = low.scale / unit;
    j = top.at * scale;
    j_prime = (nu * order.xi * top.at - top.above) * scale;
    const neighbours high = recur_up(order, -1.0, low.y);
    y = high.at;
    y_prime = nu * order.xi * high.at - high.above;
}

} // namespace metrify
