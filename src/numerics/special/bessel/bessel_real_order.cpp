#include "numerics/special/bessel/bessel_real_order.h"

#include "base/interruption.h"
#include "numerics/special/bessel/chebyshev.h"
#include "numerics/special/bessel/exact_product.h"
#include "numerics/special/trigonometry.h"

#include <array>
#include <numbers>

namespace metrify::bessel {

namespace {

/// 2/x, of which quotient is the rounded value. The low part is the remainder of a long division.
double_double two_over(double x, double quotient) {
    const double hi = leading_digits(quotient);
    const double x_hi = leading_digits(x);
    const double remainder = (2.0 - hi * x_hi) - hi * (x - x_hi);
    return {hi, remainder / x};
}

} // namespace

double report_failure(failure reason, std::string_view routine, text_str*& err) {
    struct wording {
        std::string_view before, after; // the routine's name
    };
    static constexpr std::array<wording, 6> wordings = {{
        {},
        {"ERROR:   x must be > 0 in ", "().\n"},
        {"ERROR:   nu must be >= 0 in ", "().\n"},
        {"ERROR: x too large in ", "(); try asymptotic expansion.\n"},
        {"ERROR: series failed to converge in ", "().\n"},
        {"ERROR: cf2 failed to converge in ", "().\n"},
    }};
    const wording& text = wordings[static_cast<std::size_t>(reason)];
    str_append_three(&err, text.before, routine, text.after);
    return 0.0;
}

reduced_order::reduced_order(double argument, double order, double distance)
    : x(argument), nu(order), steps(distance >= 1.0 ? std::trunc(distance) : 0.0), mu(nu - steps),
      mu2(mu * mu), xi(1.0 / x), xi2(2.0 * xi), whole(std::floor(order)), whole_mu(whole - steps),
      xi2_parts(two_over(x, xi2)), rest((order - whole) * xi2) {}

namespace {

/// Combinations of 1/gamma(1 - mu) and 1/gamma(1 + mu), for |mu| <= 1/2.
struct gamma_factors {
    double gam1, gam2;
    double plus;  // 1/gamma(1 + mu)
    double minus; // 1/gamma(1 - mu)
};

gamma_factors gamma_factors_of(double mu, text_str*& err) {
    constexpr std::array<double, 7> c1 = {-1.142022680371172, 0.006516511267076, 0.000308709017308,
                                          -3.470626964e-06,   6.943764e-09,      3.678e-11,
                                          -1.36e-13};
    constexpr std::array<double, 8> c2 = {
        1.843740587300906, -0.076852840844786, 0.001271927136655, -4.971736704e-06,
        -3.312612e-08,     2.4231e-10,         -1.7e-13,          -1e-15};
    const double t = 8.0 * mu * mu - 1.0;
    const double gam1 = math_func_bes_chebev(-1.0, 1.0, c1.data(), static_cast<int>(c1.size()), t, err);
    const double gam2 = math_func_bes_chebev(-1.0, 1.0, c2.data(), static_cast<int>(c2.size()), t, err);
    return {gam1, gam2, gam2 - mu * gam1, gam2 + mu * gam1};
}

/// sinh x / x, of which e is the exponential of x.
double sinh_quotient(double x, double e) {
    if (std::fabs(x) > 0.5)
        return 0.5 * (e - 1.0 / e) / x;
    const double t = x * x;
    return 1.0 +
           t * (1.0 / 6.0) *
               (1.0 + t * (1.0 / 20.0) *
                          (1.0 + t * (1.0 / 42.0) *
                                     (1.0 + t * (1.0 / 72.0) *
                                                (1.0 + t * (1.0 / 110.0) * (1.0 + t * (1.0 / 156.0))))));
}

} // namespace

temme_series::temme_series(const reduced_order& order, text_str*& err) : mu(order.mu), mu2(order.mu2) {
    const double pi_mu = std::numbers::pi * mu;
    const double log_term = -std::log(0.5 * order.x);
    const double power = mu * log_term;
    const double e = std::exp(power);
    const double factor = or_limit(pi_mu, pi_mu / sine(pi_mu));
    const gamma_factors gamma = gamma_factors_of(mu, err);
    f = factor * (gamma.gam1 * 0.5 * (e + 1.0 / e) + gamma.gam2 * sinh_quotient(power, e) * log_term);
    p = 0.5 * e / gamma.plus;
    q = 0.5 / (e * gamma.minus);
}

scaled_neighbours recur_down(const reduced_order& order, double sign, neighbours f) {
    for (std::int64_t step = 0; step < order.step_count(); ++step) {
        f = {order.term(order.whole - static_cast<double>(step)).sum() * f.at + sign * f.above, f.at};
        // After an overflow the result is a not-a-number in any case.
        if (!std::isfinite(f.at) || is_interrupted_at(step + 1))
            break;
    }
    const double unit = std::fabs(f.at) + std::fabs(f.above);
    return {{f.at / unit, f.above / unit}, unit};
}

neighbours recur_up(const reduced_order& order, double sign, neighbours f) {
    for (std::int64_t step = 1; step <= order.step_count(); ++step) {
        const double next =
            order.term(order.whole_mu + static_cast<double>(step)).sum() * f.above + sign * f.at;
        f = {f.above, next};
        // Further steps change nothing: after an overflow, and if both are 0.
        if (f.at != f.at || (sign > 0.0 && f.at == f.above && (std::isinf(f.at) || f.at == 0.0)) ||
            is_interrupted_at(step))
            break;
    }
    return f;
}

} // namespace metrify::bessel
