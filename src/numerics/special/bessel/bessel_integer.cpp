#include "numerics/special/bessel/bessel_integer.h"

#include "base/failure.h"
#include "base/interruption.h"
#include "numerics/special/bessel/bessel_fits.h"
#include "numerics/special/trigonometry.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace metrify {

namespace {

constexpr std::int32_t order_without_negative = std::numeric_limits<std::int32_t>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

// A downward recurrence that exceeds the first of these is scaled by the second.
constexpr double BIGNO = 1e10;
constexpr double BIGNI = 1e-10;

/// True if steps of this factor, with the scaling between them, can't overflow.
bool scaling_keeps_up(double factor) {
    return factor + 1.0 <= BIGNO;
}

/// How far above the order n a downward recurrence starts.
std::int64_t lead(std::int32_t n) {
    constexpr double ACC = 40.0;
    return static_cast<std::int64_t>(std::sqrt(ACC * n));
}

bool is_odd(std::int32_t n) {
    return n % 2 != 0;
}

/// From the orders 0 and 1 to n >= 2 by f(j + 1) = (2 j / x) f(j) + sign f(j - 1), with 2/x given.
double recurred_upward(std::int32_t n, double two_over_x, double sign, double f0, double f1) {
    double before = f0;
    double at = f1;
    for (std::int32_t j = 1; j < n; ++j) {
        const double next = j * two_over_x * at + sign * before;
        before = at;
        at = next;
        // Further steps change nothing.
        if (at != at || (sign > 0.0 && before == at && (at == infinity || at == 0.0)) || is_interrupted_at(j))
            break;
    }
    return at;
}

/// Likewise for J and Y. If x is so much larger than n that the factor is lost in rounding, the steps only
/// change signs, and the last one is known.
double recurred_upward_alternating(std::int32_t n, double two_over_x, double f0, double f1) {
    constexpr double negligible = 0x1p-55;
    const double factor = n * two_over_x;
    const bool factor_is_lost = factor * std::fabs(f1) < negligible * std::fabs(f0) &&
                                factor * std::fabs(f0) < negligible * std::fabs(f1);
    if (!factor_is_lost)
        return recurred_upward(n, two_over_x, -1.0, f0, f1);
    const double magnitude = is_odd(n) ? f1 : f0;
    return n % 4 < 2 ? magnitude : -magnitude;
}

/// J by Miller's downward recurrence, for ax <= n.
double miller_j(std::int32_t n, double ax) {
    const double tox = 2.0 / ax;
    double above = 0.0;
    double at = 1.0;
    double value = 0.0;
    double sum = 0.0;
    bool adds = false;
    for (std::int64_t j = 2 * ((n + lead(n)) / 2); j > 0; --j) {
        const double factor = static_cast<double>(j) * tox;
        const double below = factor * at - above;
        above = at;
        at = below;
        if (std::fabs(at) > BIGNO) {
            at *= BIGNI;
            above *= BIGNI;
            value *= BIGNI;
            sum *= BIGNI;
        }
        if (adds)
            sum += at;
        adds = !adds;
        if (j == n)
            value = above;
        if (at != at || is_interrupted_at(j))
            return at;
        // The value has underflowed, and its divisor will be positive and finite.
        if (j < n && value == 0.0 && scaling_keeps_up(factor))
            return value;
    }
    return value / (2.0 * sum - at);
}

// A value whose logarithm is this much below that of its divisor has underflowed.
constexpr double certainly_underflows = 800.0;

/// J for ax <= n by the recurrence, which isn't run if its result is known.
double downward_j(std::int32_t n, double ax) {
    // The logarithm of the recurrence's growth from the order n to ax: the integral of acosh(t / x) over
    // the orders.
    const double decay = n * std::acosh(n / ax) - std::sqrt((n - ax) * (n + ax));
    if (decay > certainly_underflows && scaling_keeps_up(static_cast<double>(n + lead(n)) * (2.0 / ax)))
        return 0.0;
    return miller_j(n, ax);
}

/// I by downward recurrence, normalised by the order 0, for ax > 0.
double miller_i(std::int32_t n, double ax, double order_0) {
    const double tox = 2.0 / ax;
    double above = 0.0;
    double at = 1.0;
    double value = 0.0;
    for (std::int64_t j = 2 * (n + lead(n)); j > 0; --j) {
        const double below = above + static_cast<double>(j) * tox * at;
        above = at;
        at = below;
        if (std::fabs(at) > BIGNO) {
            value *= BIGNI;
            at *= BIGNI;
            above *= BIGNI;
        }
        if (j == n)
            value = above;
        if ((j < n && value == 0.0) || is_interrupted_at(j))
            return value * order_0;
        if (at == infinity)
            return j > n ? not_a_number : 0.0;
    }
    return value * (order_0 / at);
}

/// I for ax > 0 and n >= 2 by the recurrence, which isn't run if its result is known: it starts at more than
/// twice the order.
double downward_i(std::int32_t n, double ax) {
    const double order_0 = math_func_bessi0(ax);
    if (order_0 != order_0)
        return order_0;
    // The logarithm of I(0) / I(n): the integral of asinh(t / x) over the orders.
    const double decay = n * std::asinh(n / ax) - n * (n / (std::hypot(n, ax) + ax));
    if (scaling_keeps_up(static_cast<double>(2 * (n + lead(n))) * (2.0 / ax))) {
        constexpr double certainly_does_not = 600.0;
        if (decay > certainly_underflows)
            return 0.0 * order_0;
        if (order_0 == infinity && decay < certainly_does_not)
            return infinity;
    }
    return miller_i(n, ax, order_0);
}

/// The first kind at x from its value at |x|: odd orders are odd functions.
double with_parity(std::int32_t n, double x, double value) {
    return x < 0.0 && is_odd(n) ? -value : value;
}

} // namespace

double math_func_bessj(std::int32_t n, double x, text_str*& err) {
    if (n == order_without_negative)
        return numeric_failure(err, "ERROR:   order out of range in math_func_bessj().\n");
    if (n < 0) {
        const double angle = -n * std::numbers::pi;
        const double j = math_func_bessj(-n, x, err);
        return cosine(angle) * j - sine(angle) * math_func_bessy(-n, x, err);
    }
    if (n == 0)
        return math_func_bessj0(x);
    if (n == 1)
        return math_func_bessj1(x);
    const double ax = std::fabs(x);
    if (ax == 0.0)
        return 0.0;
    const double value =
        ax > n ? recurred_upward_alternating(n, 2.0 / ax, math_func_bessj0(ax), math_func_bessj1(ax))
               : downward_j(n, ax);
    return with_parity(n, x, value);
}

double math_func_bessy(std::int32_t n, double x, text_str*& err) {
    if (n == order_without_negative)
        return numeric_failure(err, "ERROR:   order out of range in math_func_bessy().\n");
    if (n < 0) {
        const double angle = -n * std::numbers::pi;
        const double j = math_func_bessj(-n, x, err);
        return sine(angle) * j + cosine(angle) * math_func_bessy(-n, x, err);
    }
    if (n == 0)
        return math_func_bessy0(x);
    if (n == 1)
        return math_func_bessy1(x);
    return recurred_upward_alternating(n, 2.0 / x, math_func_bessy0(x), math_func_bessy1(x));
}

double math_func_bessi(std::int32_t n, double x, text_str*& err) {
    if (n == order_without_negative)
        return numeric_failure(err, "ERROR:   order out of range in math_func_bessi().\n");
    if (n < 0) {
        constexpr double two_over_pi = 0.6366197723675814;
        const double i = math_func_bessi(-n, x, err);
        return i + two_over_pi * sine(-n * std::numbers::pi) * math_func_bessk(-n, x, err);
    }
    if (n == 0)
        return math_func_bessi0(x);
    if (n == 1)
        return math_func_bessi1(x);
    if (x == 0.0)
        return 0.0;
    return with_parity(n, x, downward_i(n, std::fabs(x)));
}

double math_func_bessk(std::int32_t n, double x, text_str*& err) {
    if (n == order_without_negative)
        return numeric_failure(err, "ERROR:   order out of range in math_func_bessk().\n");
    const std::int32_t order = n < 0 ? -n : n;
    if (order == 0)
        return math_func_bessk0(x);
    if (order == 1)
        return math_func_bessk1(x);
    return recurred_upward(order, 2.0 / x, 1.0, math_func_bessk0(x), math_func_bessk1(x));
}

} // namespace metrify
