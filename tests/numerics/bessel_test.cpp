// Bessel and Airy functions: particular values, failures, and the outputs after a failure.

#include "numerics/special/bessel/airy.h"
#include "numerics/special/bessel/bessel_fits.h"
#include "numerics/special/bessel/bessel_integer.h"
#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/bessel/chebyshev.h"
#include "tests/numerics/evaluated.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;

struct four_outputs {
    double a = 7.0;
    double b = 7.0;
    double c = 7.0;
    double d = 7.0;
    std::string err;
};

template <class Routine, class... Arguments>
four_outputs call(Routine routine, Arguments... arguments) {
    four_outputs out;
    work_text err;
    routine(arguments..., out.a, out.b, out.c, out.d, err.str);
    out.err = err.view();
    return out;
}

void expect_failed(const four_outputs& out, const char* text) {
    EXPECT_EQ(out.err, text);
    for (const double x : {out.a, out.b, out.c, out.d})
        EXPECT_EQ(x, 0.0) << text;
}

TEST(bessel, j0_at_0_is_the_ratio_of_two_constants) {
    EXPECT_EQ(math_func_bessj0(0.0), 57568490574.0 / 57568490411.0);
    EXPECT_NEAR(math_func_bessj0(0.0), 1.0000000028, 5e-11);
    EXPECT_EQ(evaluate(math_func_bessj, 0, 0.0).value, math_func_bessj0(0.0));
}

TEST(bessel, integer_orders_from_2_are_exactly_0_at_0) {
    for (const std::int32_t n : {2, 3, 100, 2147483647}) {
        EXPECT_EQ(evaluate(math_func_bessj, n, 0.0).value, 0.0);
        EXPECT_EQ(evaluate(math_func_bessi, n, 0.0).value, 0.0);
    }
}

TEST(bessel, y_at_0_is_minus_infinity_without_a_text) {
    const evaluated y = evaluate(math_func_bessy, 0, 0.0);
    EXPECT_EQ(y.value, -plus_infinity);
    EXPECT_EQ(y.err, "");
}

TEST(bessel, order_1_is_odd_on_both_ranges) {
    for (const double x : {0.5, 3.0, 3.75, 7.9, 8.0, 30.0}) {
        EXPECT_EQ(math_func_bessj1(-x), -math_func_bessj1(x)) << x;
        EXPECT_EQ(math_func_bessi1(-x), -math_func_bessi1(x)) << x;
    }
}

TEST(bessel, order_0_is_even) {
    for (const double x : {0.5, 3.0, 3.75, 7.9, 8.0, 30.0}) {
        EXPECT_EQ(math_func_bessj0(-x), math_func_bessj0(x)) << x;
        EXPECT_EQ(math_func_bessi0(-x), math_func_bessi0(x)) << x;
    }
}

TEST(bessel, i1_has_the_required_fourth_coefficient) {
    // At 3.75/|x| = 1 the polynomial is the plain sum of its coefficients.
    const double sum = 0.39894228 - 0.03988024 - 0.00362018 + 0.0016381 - 0.01031555 + 0.02282967 -
                       0.02895312 + 0.01787654 - 0.00420059;
    EXPECT_NEAR(math_func_bessi1(3.75) / (std::exp(3.75) / std::sqrt(3.75)), sum, 1e-15);
}

TEST(bessel, j0_and_y0_differ_in_the_last_coefficient_of_the_phase) {
    const double x = 8.0;
    const double phase = x - 0.785398164;
    const double p = 1.0 - 0.1098628627e-2 + 0.2734510407e-4 - 0.2073370639e-5 + 0.2093887211e-6;
    const double q = -0.1562499995e-1 + 0.1430488765e-3 - 0.6911147651e-5 + 0.7621095161e-6;
    const double size = std::sqrt(0.636619772 / x);
    EXPECT_NEAR(math_func_bessj0(x), size * (std::cos(phase) * p - std::sin(phase) * (q - 9.34935152e-8)),
                1e-15);
    EXPECT_NEAR(math_func_bessy0(x), size * (std::sin(phase) * p + std::cos(phase) * (q - 9.34945152e-8)),
                1e-15);
}

TEST(bessel, odd_integer_orders_change_their_sign_with_x) {
    for (const double x : {0.5, 2.5, 40.0}) {
        EXPECT_EQ(evaluate(math_func_bessj, 3, -x).value, -evaluate(math_func_bessj, 3, x).value);
        EXPECT_EQ(evaluate(math_func_bessj, 4, -x).value, evaluate(math_func_bessj, 4, x).value);
        EXPECT_EQ(evaluate(math_func_bessi, 3, -x).value, -evaluate(math_func_bessi, 3, x).value);
        EXPECT_EQ(evaluate(math_func_bessi, 4, -x).value, evaluate(math_func_bessi, 4, x).value);
    }
}

TEST(bessel, k_of_a_negative_order_equals_that_of_the_positive_one) {
    for (const std::int32_t n : {1, 2, 5})
        EXPECT_EQ(evaluate(math_func_bessk, -n, 1.5).value, evaluate(math_func_bessk, n, 1.5).value);
    EXPECT_EQ(evaluate(math_func_bessk_frac, -2.5, 1.5).value,
              evaluate(math_func_bessk_frac, 2.5, 1.5).value);
}

TEST(bessel, k_of_a_real_order_is_the_second_output_to_the_last_bit) {
    for (const double nu : {0.0, 0.3, 0.5, 2.5, 30.25, 1e9 + 0.5, 1e300, quiet_nan}) {
        for (const double x :
             {-1.0, 0.0, 1e-310, 1e-200, 1e-9, 1.0, 2.0, 700.0, 9999.0, 1e4, 1e12, quiet_nan}) {
            const four_outputs both = call(math_func_bessik, x, nu);
            const evaluated k = evaluate(math_func_bessk_frac, nu, x);
            EXPECT_EQ(std::bit_cast<std::uint64_t>(k.value), std::bit_cast<std::uint64_t>(both.b))
                << nu << ' ' << x;
            EXPECT_EQ(k.err, both.err) << nu << ' ' << x;
        }
    }
}

TEST(bessel, i_of_a_negative_integer_order_reaches_the_fit_of_k_below_0_without_a_text) {
    for (const double x : {0.0, -1.0}) {
        const evaluated i = evaluate(math_func_bessi, -2, x);
        EXPECT_TRUE(std::isnan(i.value)) << x;
        EXPECT_EQ(i.err, "");
    }
}

TEST(bessel, the_order_without_a_positive_counterpart_is_out_of_range) {
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const auto expect_out_of_range = [](const evaluated& f, const char* text) {
        EXPECT_EQ(f.value, 0.0);
        EXPECT_EQ(f.err, text);
    };
    expect_out_of_range(evaluate(math_func_bessj, least, 1.0),
                        "ERROR:   order out of range in math_func_bessj().\n");
    expect_out_of_range(evaluate(math_func_bessy, least, 1.0),
                        "ERROR:   order out of range in math_func_bessy().\n");
    expect_out_of_range(evaluate(math_func_bessi, least, 1.0),
                        "ERROR:   order out of range in math_func_bessi().\n");
    expect_out_of_range(evaluate(math_func_bessk, least, 1.0),
                        "ERROR:   order out of range in math_func_bessk().\n");
}

TEST(bessel, real_orders_refuse_x_before_the_order) {
    for (const double x : {0.0, -1.0}) {
        expect_failed(call(math_func_bessjy, x, -1.0), "ERROR:   x must be > 0 in math_func_bessjy().\n");
        expect_failed(call(math_func_bessik, x, -1.0), "ERROR:   x must be > 0 in math_func_bessik().\n");
    }
    expect_failed(call(math_func_bessjy, 1.0, -0.1), "ERROR:   nu must be >= 0 in math_func_bessjy().\n");
    expect_failed(call(math_func_bessik, 1.0, -0.1), "ERROR:   nu must be >= 0 in math_func_bessik().\n");
}

TEST(bessel, real_orders_equal_their_first_term_where_x_is_tiny) {
    for (const double nu : {0.25, 0.5, 0.75}) {
        for (const double x : {1e-300, 1e-200, 1e-30}) {
            const double first_term = std::pow(0.5 * x, nu) / std::tgamma(1.0 + nu);
            EXPECT_NEAR(evaluate(math_func_bessj_frac, nu, x).value / first_term, 1.0, 1e-13)
                << nu << ' ' << x;
            EXPECT_NEAR(evaluate(math_func_bessi_frac, nu, x).value / first_term, 1.0, 1e-13)
                << nu << ' ' << x;
        }
    }
}

TEST(bessel, real_orders_give_up_on_a_large_x) {
    expect_failed(call(math_func_bessjy, 1e6, 0.5),
                  "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
    expect_failed(call(math_func_bessik, 1e12, 0.5),
                  "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
}

// The limit of 10000 passes, and what counts as no change any more: evaluated with 30 digits, the fraction of
// J and Y takes 9995 passes at 9838 and 10003 at 9850, and 7 less each if ten times as much counted as none.
// That of I and K takes 9931 at 2.58e6 and 10529 at 2.9e6.
TEST(bessel, real_orders_give_up_where_their_fraction_takes_too_many_passes) {
    EXPECT_EQ(call(math_func_bessjy, 9838.0, 0.5).err, "");
    EXPECT_NE(call(math_func_bessjy, 9850.0, 0.5).err, "");
    EXPECT_EQ(call(math_func_bessik, 2.58e6, 0.5).err, "");
    EXPECT_NE(call(math_func_bessik, 2.9e6, 0.5).err, "");
}

// A step below 1e-16 counts as none. With quadruple precision, the fraction at the first argument takes 9999
// passes until a step is below 2e-16 but more than 10000 until one is below 1e-16; at the second, 9930 and
// 10021. In double precision, where 1e-16 is below the distance of 1 from the number before it, the numbers
// of passes lie on the same sides of the limit, with accumulated coefficients and with separate ones.
TEST(bessel, real_orders_do_not_take_the_last_digit_of_a_fraction_for_settled) {
    expect_failed(call(math_func_bessjy, 9847.03125, 0.5),
                  "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
    expect_failed(call(math_func_bessik, 2627200.0, 0.5),
                  "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
}

// The first kind starts at 1e-30 and is taken down a hundred orders, by a factor of 1.6e338 at the first
// point and of 2e338 at the second, according to the exact values at both ends. The second exceeds the range
// of doubles.
TEST(bessel, real_orders_are_no_numbers_where_the_recurrence_from_its_start_overflows) {
    EXPECT_EQ(evaluate(math_func_bessj_frac, 100.25, 0.03192836).value, 0.0);
    EXPECT_TRUE(std::isnan(evaluate(math_func_bessj_frac, 100.25, 0.03185718).value));
    EXPECT_EQ(evaluate(math_func_bessi_frac, 100.25, 0.03192849).value, 0.0);
    EXPECT_TRUE(std::isnan(evaluate(math_func_bessi_frac, 100.25, 0.03185731).value));
}

// Next to the zero of a fit its terms cancel, so that the last digit of its last coefficient is much larger
// than the rounding. Evaluated with 70 digits, from the difference of argument and phase shift as a double. A
// unit in that digit changes these values by 1.3e-17, 2.7e-18 and 2.9e-17.
TEST(bessel, the_fits_for_large_arguments_have_each_digit_of_their_last_coefficient) {
    EXPECT_NEAR(math_func_bessj0(8.653727913474166), 2.8334901898014832e-16, 5e-18);
    EXPECT_NEAR(math_func_bessy0(10.222345044122275), 2.4766072207241426e-16, 1.3e-18);
    EXPECT_NEAR(math_func_bessj1(10.173468135833014), 3.4325261082215433e-16, 1e-17);
}

// The cosine's factor has no such zero. The published steps in double precision, at arguments where a unit in
// the last digit of the coefficient changes the result by one in its last place and no rounding is a close
// decision.
TEST(bessel, the_cosines_factor_has_each_digit_of_its_last_coefficient) {
    EXPECT_EQ(math_func_bessj0(8.001953125), 0.17119226199457108);
    EXPECT_EQ(math_func_bessj1(8.001220703125), 0.23480989326395693);
}

// Just below x = 2 the terms of the series of K cancel. Evaluated with 70 digits from the required
// coefficients of the Chebyshev sums: a unit in the last digit of any of the fifteen changes one of these
// values by at least 66e-16 of itself.
TEST(bessel, the_gamma_factors_have_each_digit_of_their_coefficients) {
    EXPECT_NEAR(evaluate(math_func_bessk_frac, 0.03125, 1.984375).value / 0.1161255519559565188, 1.0, 30e-16);
    EXPECT_NEAR(evaluate(math_func_bessk_frac, 0.484375, 1.984375).value / 0.12191502355607264854, 1.0,
                30e-16);
}

TEST(bessel, a_not_a_number_ends_in_the_text_of_the_first_fraction) {
    expect_failed(call(math_func_bessjy, quiet_nan, 0.5),
                  "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
    expect_failed(call(math_func_bessik, 1.0, quiet_nan),
                  "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
}

TEST(bessel, integer_orders_of_a_not_a_number_are_none_without_a_text) {
    for (const std::int32_t n : {0, 1, 2, 7, -2, 2147483647}) {
        for (const auto routine : {math_func_bessj, math_func_bessy, math_func_bessi, math_func_bessk}) {
            const evaluated f = evaluate(routine, n, quiet_nan);
            EXPECT_TRUE(std::isnan(f.value)) << n;
            EXPECT_EQ(f.err, "");
        }
    }
}

TEST(bessel, chebyshev_sum_of_one_term_is_half_of_it) {
    const double c[] = {3.0, 5.0};
    EXPECT_EQ(evaluate(math_func_bes_chebev, -1.0, 1.0, c, 1, 0.3).value, 1.5);
    EXPECT_EQ(evaluate(math_func_bes_chebev, -1.0, 1.0, c, 2, 0.5).value, 4.0);
    EXPECT_EQ(evaluate(math_func_bes_chebev, 0.0, 4.0, c, 2, 4.0).value, 6.5);
}

TEST(bessel, chebyshev_sum_refuses_arguments_outside_its_range) {
    const double c[] = {3.0, 5.0};
    for (const double x : {-1.1, 1.1}) {
        const evaluated sum = evaluate(math_func_bes_chebev, -1.0, 1.0, c, 2, x);
        EXPECT_EQ(sum.value, 0.0);
        EXPECT_EQ(sum.err, "ERROR:  x not in range in routine math_func_bes_chebev().\n");
    }
    EXPECT_EQ(evaluate(math_func_bes_chebev, -1.0, 1.0, c, 2, 1.0).err, "");
}

TEST(airy, at_0_are_the_stored_constants) {
    for (const double x : {0.0, -0.0, quiet_nan}) {
        const four_outputs f = call(math_func_airy, x);
        EXPECT_EQ(f.a, 0.3550280538878172);
        EXPECT_EQ(f.b, 0.6149266274460007);
        EXPECT_EQ(f.c, -0.2588194037928068);
        EXPECT_EQ(f.d, 0.44828835735382644);
        EXPECT_EQ(f.err, "");
    }
}

TEST(airy, failing_inner_calls_leave_a_text_each_and_zeros) {
    const four_outputs below = call(math_func_airy, -1e6);
    EXPECT_EQ(below.err, "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n"
                         "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
    EXPECT_EQ(below.a, 0.0);
    const four_outputs above = call(math_func_airy, 1e12);
    EXPECT_EQ(above.err, "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n"
                         "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
    EXPECT_EQ(above.b, 0.0);
}

} // namespace
