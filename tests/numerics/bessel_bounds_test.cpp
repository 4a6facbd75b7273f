// Large orders and arguments end soon, and ending a recurrence early changes no result: the plain recurrences
// are written out here, and every result must be theirs to the last bit.

#include "numerics/special/bessel/bessel_fits.h"
#include "numerics/special/bessel/bessel_integer.h"
#include "numerics/special/bessel/bessel_real.h"
#include "tests/numerics/evaluated.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>

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

TEST(bessel_bounds, the_largest_orders_end_soon) {
    const auto start = std::chrono::steady_clock::now();
    for (const std::int32_t n : {1000000000, 2147483647, -2147483647}) {
        for (const double x : {1e-310, 1e-5, 1.0, 600.0, 1e5, 1e30, 1e308, -1.0, -1e30})
            for (const auto routine : {math_func_bessj, math_func_bessy, math_func_bessi, math_func_bessk})
                EXPECT_EQ(evaluate(routine, n, x).err, "");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// Far beyond x the first kind is lost in the overflow of its recurrence. The second kind of the ordinary
// functions goes to minus infinity and two orders later to the difference of two infinities; that of the
// modified ones grows without a change of sign.
TEST(bessel_bounds, real_orders_far_beyond_x_overflow) {
    for (const double nu : {1e6 + 0.5, 1e9 + 0.5, 1e15 + 0.5, -1e12 - 0.5, 1e300}) {
        for (const double x : {1.0, 1.9, 700.0}) {
            for (const auto routine : {math_func_bessj_frac, math_func_bessy_frac, math_func_bessi_frac}) {
                const evaluated f = evaluate(routine, nu, x);
                EXPECT_EQ(f.err, "") << nu << ' ' << x;
                EXPECT_TRUE(std::isnan(f.value)) << nu << ' ' << x;
            }
            EXPECT_EQ(evaluate(math_func_bessk_frac, nu, x).value, plus_infinity) << nu << ' ' << x;
        }
        // The exponential of -1000, with which the recurrence starts, is 0, and so is all that follows.
        EXPECT_EQ(evaluate(math_func_bessk_frac, nu, 1000.0).value, 0.0) << nu;
    }
}

// 2/x overflows, so that the first fraction never settles.
TEST(bessel_bounds, real_orders_of_the_least_numbers_fail) {
    for (const double nu : {1e6 + 0.5, 1e15 + 0.5, -1e12 - 0.5}) {
        for (const auto routine : {math_func_bessj_frac, math_func_bessy_frac})
            EXPECT_EQ(evaluate(routine, nu, 1e-310).err,
                      "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
        for (const auto routine : {math_func_bessi_frac, math_func_bessk_frac})
            EXPECT_EQ(evaluate(routine, nu, 1e-310).err,
                      "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
    }
}

TEST(bessel_bounds, large_real_orders_end_soon) {
    const auto start = std::chrono::steady_clock::now();
    for (const double nu : {1e6 + 0.5, 1e9 + 0.5, 1e15 + 0.5, -1e12 - 0.5, 1e300}) {
        for (const double x : {1e-310, 1.0, 1.9, 1000.0, 1e6, 1e12, 1e300})
            for (const auto routine :
                 {math_func_bessj_frac, math_func_bessy_frac, math_func_bessi_frac, math_func_bessk_frac})
                evaluate(routine, nu, x);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST(bessel_bounds, known_ends_of_a_large_order) {
    constexpr std::int32_t n = 1000000000;
    EXPECT_EQ(evaluate(math_func_bessj, n, 1.0).value, 0.0);
    EXPECT_EQ(evaluate(math_func_bessi, n, 1.0).value, 0.0);
    EXPECT_EQ(evaluate(math_func_bessk, n, 1.0).value, plus_infinity);
    EXPECT_TRUE(std::isnan(evaluate(math_func_bessy, n, 1.0).value)); // -inf - -inf, two steps later
    EXPECT_EQ(evaluate(math_func_bessj, n, 1e300).value, math_func_bessj0(1e300)); // n is a multiple of 4
    EXPECT_EQ(evaluate(math_func_bessi, n, 1e300).value, plus_infinity);
}

} // namespace
