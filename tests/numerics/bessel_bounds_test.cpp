// Large orders and arguments end soon, and ending a recurrence early changes no result: the plain recurrences
// are implemented here, and every result must equal theirs to the last bit.

#include "numerics/special/bessel/bessel_fits.h"
#include "numerics/special/bessel/bessel_integer.h"
#include "numerics/special/bessel/bessel_real.h"
#include "tests/numerics/evaluated.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <numbers>
#include <string>

namespace {

using namespace metrify;
using namespace metrify::test;

double plain_upward(std::int32_t n, double x, double sign, double f0, double f1) {
    const double tox = 2.0 / x;
    for (std::int32_t j = 1; j < n; ++j) {
        const double next = j * tox * f1 + sign * f0;
        f0 = f1;
        f1 = next;
    }
    return f1;
}

double plain_j(std::int32_t n, double x) {
    const double ax = std::fabs(x);
    const double sign = x < 0.0 && n % 2 != 0 ? -1.0 : 1.0;
    if (ax > n)
        return sign * plain_upward(n, ax, -1.0, math_func_bessj0(ax), math_func_bessj1(ax));
    double above = 0.0;
    double at = 1.0;
    double value = 0.0;
    double sum = 0.0;
    bool adds = false;
    for (std::int32_t j = 2 * ((n + static_cast<std::int32_t>(std::sqrt(40.0 * n))) / 2); j > 0; --j) {
        const double below = j * (2.0 / ax) * at - above;
        above = at;
        at = below;
        if (std::fabs(at) > 1e10) {
            at *= 1e-10;
            above *= 1e-10;
            value *= 1e-10;
            sum *= 1e-10;
        }
        if (adds)
            sum += at;
        adds = !adds;
        if (j == n)
            value = above;
    }
    return sign * (value / (2.0 * sum - at));
}

double plain_i(std::int32_t n, double x) {
    const double ax = std::fabs(x);
    double above = 0.0;
    double at = 1.0;
    double value = 0.0;
    for (std::int32_t j = 2 * (n + static_cast<std::int32_t>(std::sqrt(40.0 * n))); j > 0; --j) {
        const double below = above + j * (2.0 / ax) * at;
        above = at;
        at = below;
        if (std::fabs(at) > 1e10) {
            value *= 1e-10;
            at *= 1e-10;
            above *= 1e-10;
        }
        if (j == n)
            value = above;
    }
    value *= math_func_bessi0(x) / at;
    return x < 0.0 && n % 2 != 0 ? -value : value;
}

void expect_same_bits(double value, double expected, std::int32_t n, double x) {
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(value)) << n << ' ' << x;
        return;
    }
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected))
        << n << ' ' << x << ": " << value << " instead of " << expected;
}

constexpr std::int32_t orders[] = {2, 3, 4, 5, 17, 100, 999, 1000, 1001, 1500, 3000, 20000};

// From denormal numbers to the largest, closely spaced where results overflow and underflow.
template <class Check>
void for_many_arguments(const Check& check) {
    for (const std::int32_t n : orders) {
        for (double x = 1e-320; x < 1e308; x *= 7.3)
            check(n, x);
        for (double x = 1e-3; x < 40.0 * n; x *= 1.17)
            check(n, x);
        for (double x = 700.0; x < 720.0; x += 1.7)
            check(n, x);
    }
}

TEST(bessel_bounds, j_is_what_the_plain_recurrence_gives) {
    for_many_arguments([](std::int32_t n, double x) {
        expect_same_bits(evaluate(math_func_bessj, n, x).value, plain_j(n, x), n, x);
        expect_same_bits(evaluate(math_func_bessj, n, -x).value, plain_j(n, -x), n, -x);
    });
}

TEST(bessel_bounds, y_is_what_the_plain_recurrence_gives) {
    for_many_arguments([](std::int32_t n, double x) {
        expect_same_bits(evaluate(math_func_bessy, n, x).value,
                         plain_upward(n, x, -1.0, math_func_bessy0(x), math_func_bessy1(x)), n, x);
    });
}

TEST(bessel_bounds, i_is_what_the_plain_recurrence_gives) {
    for_many_arguments([](std::int32_t n, double x) {
        expect_same_bits(evaluate(math_func_bessi, n, x).value, plain_i(n, x), n, x);
        expect_same_bits(evaluate(math_func_bessi, n, -x).value, plain_i(n, -x), n, -x);
    });
}

TEST(bessel_bounds, k_is_what_the_plain_recurrence_gives) {
    for_many_arguments([](std::int32_t n, double x) {
        expect_same_bits(evaluate(math_func_bessk, n, x).value,
                         plain_upward(n, x, 1.0, math_func_bessk0(x), math_func_bessk1(x)), n, x);
    });
}

void expect_value(const evaluated& f, double expected, double order, double x) {
    EXPECT_EQ(f.err, "") << order << ' ' << x;
    if (std::isnan(expected))
        EXPECT_TRUE(std::isnan(f.value)) << order << ' ' << x << ": " << f.value;
    else
        EXPECT_DOUBLE_EQ(f.value, expected) << order << ' ' << x;
}

/// Values of the four functions at one argument.
struct four_values {
    double j, y, i, k;
};

void expect_values(std::int32_t n, double x, const four_values& expected) {
    expect_value(evaluate(math_func_bessj, n, x), expected.j, n, x);
    expect_value(evaluate(math_func_bessy, n, x), expected.y, n, x);
    expect_value(evaluate(math_func_bessi, n, x), expected.i, n, x);
    expect_value(evaluate(math_func_bessk, n, x), expected.k, n, x);
}

constexpr std::int32_t largest_order = 2147483647;

/// The reflection formulas at the largest order.
four_values at_negative_order(const four_values& f) {
    // Of the double next to the order times pi, by mpmath.
    constexpr double cosine = -0.9999999999998266, sine = 5.888322566797015e-07;
    return {cosine * f.j - sine * f.y, sine * f.j + cosine * f.y, f.i + 2.0 / std::numbers::pi * sine * f.k,
            f.k};
}

/// For the first order, a multiple of 4, and for the last, which leaves 3.
void expect_values_of_the_largest_orders(double x, const four_values& even, const four_values& odd) {
    expect_values(1000000000, x, even);
    expect_values(largest_order, x, odd);
    expect_values(-largest_order, x, at_negative_order(odd));
}

// Y goes to minus infinity and two steps later to the difference of two infinities. The downward recurrences
// are scaled by 1e-10 a step: below x = 0.4 they grow faster than that and overflow, which for J is such a
// difference, too, and for I leaves no number to divide by. At 1e5 I is 0 times an infinite order 0, and the
// exponential from which K starts is 0.
TEST(bessel_bounds, the_largest_orders_end_soon_far_above_x) {
    const auto start = std::chrono::steady_clock::now();
    for (const double x : {1e-310, 1e-5}) {
        const four_values ends = {quiet_nan, quiet_nan, quiet_nan, plus_infinity};
        expect_values_of_the_largest_orders(x, ends, ends);
    }
    for (const double x : {1.0, 600.0}) {
        const four_values ends = {0.0, quiet_nan, 0.0, plus_infinity};
        expect_values_of_the_largest_orders(x, ends, ends);
    }
    const four_values without_exponential = {0.0, quiet_nan, quiet_nan, 0.0};
    expect_values_of_the_largest_orders(1e5, without_exponential, without_exponential);
    const four_values below_0 = {0.0, quiet_nan, 0.0, quiet_nan};
    expect_values_of_the_largest_orders(-1.0, below_0, below_0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// The steps of J and Y only change signs there.
TEST(bessel_bounds, the_largest_orders_end_soon_far_below_x) {
    const auto start = std::chrono::steady_clock::now();
    for (const double x : {1e30, 1e308})
        expect_values_of_the_largest_orders(x, {math_func_bessj0(x), math_func_bessy0(x), plus_infinity, 0.0},
                                            {-math_func_bessj1(x), -math_func_bessy1(x), plus_infinity, 0.0});
    expect_values_of_the_largest_orders(-1e30, {math_func_bessj0(1e30), quiet_nan, plus_infinity, quiet_nan},
                                        {math_func_bessj1(1e30), quiet_nan, -plus_infinity, quiet_nan});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

constexpr double large_real_orders[] = {1e6 + 0.5, 1e9 + 0.5, 1e15 + 0.5, -1e12 - 0.5, 1e300};

void expect_j_and_y_overflow(double nu, double x) {
    expect_value(evaluate(math_func_bessj_frac, nu, x), quiet_nan, nu, x);
    expect_value(evaluate(math_func_bessy_frac, nu, x), quiet_nan, nu, x);
}

void expect_i_overflows(double nu, double x, double k) {
    expect_value(evaluate(math_func_bessi_frac, nu, x), quiet_nan, nu, x);
    expect_value(evaluate(math_func_bessk_frac, nu, x), k, nu, x);
}

void expect_j_and_y_fail(double nu, double x, const std::string& message) {
    for (const auto routine : {math_func_bessj_frac, math_func_bessy_frac}) {
        const evaluated f = evaluate(routine, nu, x);
        EXPECT_EQ(f.value, 0.0) << nu << ' ' << x;
        EXPECT_EQ(f.err, message) << nu << ' ' << x;
    }
}

constexpr const char* bessjy_took_too_long =
    "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n";

void expect_i_and_k_fail(double nu, double x) {
    for (const auto routine : {math_func_bessi_frac, math_func_bessk_frac})
        EXPECT_EQ(evaluate(routine, nu, x).err,
                  "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n")
            << nu << ' ' << x;
}

// Far beyond x the first kind is lost in the overflow of its recurrence. The second kind of the ordinary
// functions goes to minus infinity and two orders later to the difference of two infinities; that of the
// modified ones grows without a change of sign, unless the exponential with which it starts is 0.
TEST(bessel_bounds, real_orders_far_beyond_x_overflow_soon) {
    const auto start = std::chrono::steady_clock::now();
    for (const double nu : large_real_orders) {
        for (const double x : {1.0, 1.9, 700.0, 1000.0}) {
            expect_j_and_y_overflow(nu, x);
            expect_i_overflows(nu, x, x < 1000.0 ? plus_infinity : 0.0);
        }
    }
    for (const double nu : {1e9 + 0.5, 1e15 + 0.5, -1e12 - 0.5, 1e300}) {
        expect_j_and_y_overflow(nu, 1e6);
        expect_i_overflows(nu, 1e6, 0.0);
    }
    expect_j_and_y_overflow(1e300, 1e12);
    for (const double nu : {1e15 + 0.5, 1e300})
        expect_i_overflows(nu, 1e12, 0.0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// The fractions of both pairs settle in a number of passes that grows with x/nu; where order and x are about
// equal that of J and Y takes many more than that of I and K.
TEST(bessel_bounds, real_orders_up_to_x_fail_soon) {
    const auto start = std::chrono::steady_clock::now();
    for (const double nu : large_real_orders) {
        // 2/x overflows, so that no fraction ever settles.
        expect_j_and_y_fail(nu, 1e-310, bessjy_took_too_long);
        expect_i_and_k_fail(nu, 1e-310);
        expect_j_and_y_fail(nu, 1e300, bessjy_took_too_long);
    }
    for (const double nu : {1e6 + 0.5, 1e9 + 0.5, -1e12 - 0.5, 1e15 + 0.5})
        expect_i_and_k_fail(nu, 1e300);
    for (const double nu : {1e6 + 0.5, 1e9 + 0.5}) {
        expect_j_and_y_fail(nu, 1e12, bessjy_took_too_long);
        expect_i_and_k_fail(nu, 1e12);
    }
    expect_j_and_y_fail(-1e12 - 0.5, 1e12, bessjy_took_too_long);
    expect_i_overflows(-1e12 - 0.5, 1e12, 0.0);
    // The order is taken down to about x only, where the second fraction takes some x^(1/3) passes.
    expect_j_and_y_fail(1e15 + 0.5, 1e12, "ERROR: cf2 failed to converge in math_func_bessjy().\n");
    expect_i_overflows(1e300, 1e300, 0.0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// With t = (order - x) (2/order)^(1/3): J is Ai(t) (2/order)^(1/3), and Y is -Bi(t) times the same.
TEST(bessel_bounds, a_large_real_order_next_to_x_has_the_values_of_the_airy_functions) {
    const double nu = 1e6 + 0.5;
    EXPECT_NEAR(evaluate(math_func_bessj_frac, nu, 1e6).value, 0.0044525, 1e-6);
    EXPECT_NEAR(evaluate(math_func_bessy_frac, nu, 1e6).value, -0.0077832, 1e-6);
    expect_i_overflows(nu, 1e6, 0.0);
}

} // namespace
