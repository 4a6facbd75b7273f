// I and K of real order. The ratio of I at nu + 1 and nu comes from a continued fraction; I is recurred down
// to an order near 0, where K comes from Temme's series or from a second fraction and the Wronskian gives I;
// K is recurred up again.
//
// The recurrences carry a function at two neighbouring orders instead of the function and its derivative,
// which for a small x is a difference of two much larger numbers.

#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/bessel/bessel_real_order.h"

#include <numbers>

namespace metrify {

namespace {

using namespace bessel;
using std::numbers::pi;

constexpr std::string_view name = "math_func_bessik";

/// The first continued fraction, the ratio of I at nu + 1 and nu. All terms are positive, so that nothing
/// cancels.
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

/// K at the order mu, and x times K at mu + 1, which overflows later than K itself.
struct second_at_mu {
    double k;
    double x_above;
};

/// Temme's series, for x < XMIN.
bool sum_series(const reduced_order& order, second_at_mu& result, text_str*& err) {
    temme_series series(order, err);
    const double d = 0.25 * order.x * order.x;
    double c = 1.0;
    double sum = series.f;
    double sum1 = series.p;
    int i = 1;
    for (; i <= MAXIT; ++i) {
        series.advance(i);
        c *= d / i;
        const double term = c * series.f;
        sum += term;
        sum1 += c * (series.p - i * series.f);
        if (std::fabs(term) < std::fabs(sum) * EPS)
            break;
    }
    result = {sum, 2.0 * sum1};
    return i <= MAXIT;
}

/// Steed's second fraction, for x >= XMIN.
bool second_fraction(const reduced_order& order, second_at_mu& result) {
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
    result = {at, at * (order.mu + x + 0.5 - h)};
    return i <= MAXIT;
}

failure find_second_at_mu(const reduced_order& order, second_at_mu& result, text_str*& err) {
    if (order.x < XMIN)
        return sum_series(order, result, err) ? failure::none : failure::series;
    return second_fraction(order, result) ? failure::none : failure::second_fraction;
}

reduced_order reduced_to_half(double x, double nu) {
    return {x, nu, nu + 0.5};
}

neighbours second_at_nu(const reduced_order& order, const second_at_mu& low) {
    return recur_up(order, 1.0, {low.k, low.x_above * order.xi});
}

/// True if the first fraction certainly converges: it takes some 6 sqrt(x) steps.
bool first_fraction_ends(double x, double nu) {
    return x > 1e-200 && x < 1e4 && nu < 1e100;
}

} // namespace

void math_func_bessik(double x, double nu, double& i, double& k, double& i_prime, double& k_prime,
                      text_str*& err) {
    const auto fail = [&](failure reason) { i = k = i_prime = k_prime = report_failure(reason, name, err); };
    if (x <= 0.0)
        return fail(failure::x_not_positive);
    if (nu < 0.0)
        return fail(failure::order_negative);
    const reduced_order order = reduced_to_half(x, nu);
    double ratio = 0.0;
    if (!first_fraction(order, ratio))
        return fail(failure::x_too_large);
    const neighbours top = {FPMIN, ratio * FPMIN};
    const auto [bottom, unit] = recur_down(order, 1.0, top);
    second_at_mu low = {};
    if (const failure reason = find_second_at_mu(order, low, err); reason != failure::none)
        return fail(reason);
    // The Wronskian, as a sum of two products that are both positive.
    const double scale = 1.0 / (bottom.at * low.x_above + bottom.above * low.k * x);
    i = top.at * scale / unit;
    i_prime = i * (nu * order.xi + ratio);
    const neighbours high = second_at_nu(order, low);
    k = high.at;
    k_prime = nu * order.xi * high.at - high.above;
}

// K doesn't depend on I, but fails where math_func_bessik does.
double math_func_bessk_frac(double nu, double x, text_str*& err) {
    const double size = std::fabs(nu);
    if (!first_fraction_ends(x, size)) {
        double i = 0.0;
        double k = 0.0;
        double i_prime = 0.0;
        double k_prime = 0.0;
        math_func_bessik(x, size, i, k, i_prime, k_prime, err);
        return k;
    }
    const reduced_order order = reduced_to_half(x, size);
    second_at_mu low = {};
    if (const failure reason = find_second_at_mu(order, low, err); reason != failure::none)
        return report_failure(reason, name, err);
    return second_at_nu(order, low).at;
}

} // namespace metrify
