#pragma once

// What the routines of real order for J and Y and for I and K share: the reduced order, Temme's series, the
// recurrences and the failures.

#include "base/text_str.h"

#include <cmath>
#include <cstdint>
#include <string_view>

namespace metrify::bessel {

/// How the routines of real order fail.
enum class failure { none, x_not_positive, order_negative, x_too_large, series, second_fraction };

/// Appends the message of a failure of the named routine, and gives 0.
double report_failure(failure reason, std::string_view routine, text_str*& err);

constexpr double EPS = 1e-16;
constexpr double FPMIN = 1e-30;
constexpr int MAXIT = 10000;
constexpr double XMIN = 2.0; // below it series are used, from it on the second continued fraction

/// A number as the sum of two doubles. hi has few enough digits that its product with a small whole number is
/// exact.
struct double_double {
    double hi, lo;
    double sum() const { return hi + lo; }
};

/// The argument and the order, which is reduced to near 0 by whole steps.
struct reduced_order {
    reduced_order(double argument, double order, double distance);

    /// The coefficient of the recurrences at the order n + fraction, 2 (n + fraction)/x, for a whole n. It
    /// has 26 more binary digits than a double as long as n is below 2^27. Rounded coefficients would all
    /// have the same error, which in a long recurrence is equivalent to a shift of x or of the order.
    double_double term(double n) const { return {n * xi2_parts.hi, n * xi2_parts.lo + rest}; }

    /// The steps, as the limit of a counter. Larger numbers are clamped: the functions overflow before.
    std::int64_t step_count() const { return static_cast<std::int64_t>(steps < 9e18 ? steps : 9e18); }

    double x, nu;
    double steps; // whole, at least 0
    double mu;    // nu - steps
    double mu2;   // its square
    double xi;    // 1/x
    double xi2;   // 2/x
    double whole; // the largest whole number up to nu; the fraction is the rest
    double whole_mu;

  private:
    double_double xi2_parts; // 2/x again
    double rest;             // 2 fraction/x
};

/// The terms of Temme's series for K; those for Y are 2/pi times as large.
struct temme_series {
    /// The terms with index 0.
    temme_series(const reduced_order& order, text_str*& err);

    /// From index i - 1 to i.
    void advance(double i) {
        const double divisor = 1.0 / (i * i - mu2);
        f = (i * f + p + q) * divisor;
        p *= (i + mu) * divisor;
        q *= (i - mu) * divisor;
    }

    double f, p, q;

  private:
    double mu, mu2;
};

/// x / sin x and the like, with the limit 1 where the argument vanishes.
inline double or_limit(double small, double quotient) {
    return std::fabs(small) < EPS ? 1.0 : quotient;
}

/// A function of two neighbouring orders.
struct neighbours {
    double at, above;
};

/// The first kind from the orders nu, nu + 1 down to mu, mu + 1, divided by the sum of their magnitudes,
/// which is unit; sign is that of the recurrence's last term. Not-a-numbers if the recurrence overflows.
struct scaled_neighbours {
    neighbours f;
    double unit;
};
scaled_neighbours recur_down(const reduced_order& order, double sign, neighbours f);

/// The second kind from the orders mu, mu + 1 up to nu, nu + 1; sign is that of the recurrence's last term.
neighbours recur_up(const reduced_order& order, double sign, neighbours f);

} // namespace metrify::bessel
