// The exponents of the base units as a type with operators.

#include "units/dim_value.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace metrify;

// A different power for each base unit, so that no two can be confused.
constexpr exponents sample = {1, -2, 3, 0.5, -0.25, 6, -7, 8};

TEST(exponents, are_eight_zeros_at_first) {
    constexpr exponents none;
    EXPECT_EQ(exponents::size(), 8U);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(none[i], 0.0);
}

TEST(exponents, are_iterated_in_the_order_of_their_indices) {
    std::size_t i = 0;
    for (const double power : sample)
        EXPECT_EQ(power, sample[i++]);
    EXPECT_EQ(i, 8U);
}

TEST(exponents, can_be_changed_by_index_and_by_iteration) {
    exponents changed = sample;
    changed[dim_charge] = 9;
    EXPECT_EQ(changed, (exponents{1, -2, 3, 0.5, -0.25, 6, -7, 9}));
    for (double& power : changed)
        power = 2;
    EXPECT_EQ(changed, (exponents{2, 2, 2, 2, 2, 2, 2, 2}));
}

TEST(exponents, of_a_product_are_the_sums) {
    exponents product = sample;
    product += exponents{10, 20, 30, 40, 50, 60, 70, 80};
    EXPECT_EQ(product, (exponents{11, 18, 33, 40.5, 49.75, 66, 63, 88}));
}

TEST(exponents, of_a_quotient_are_the_differences) {
    exponents quotient = sample;
    quotient -= exponents{10, 20, 30, 40, 50, 60, 70, 80};
    EXPECT_EQ(quotient, (exponents{-9, -22, -27, -39.5, -50.25, -54, -77, -72}));
}

TEST(exponents, of_a_power_are_multiplied_by_it) {
    exponents power = sample;
    power *= -2.0;
    EXPECT_EQ(power, (exponents{-2, 4, -6, -1, 0.5, -12, 14, -16}));
}

TEST(exponents, can_be_added_to_and_subtracted_from_themselves) {
    exponents twice = sample;
    const exponents& itself = twice;
    twice += itself;
    EXPECT_EQ(twice, (exponents{2, -4, 6, 1, -0.5, 12, -14, 16}));
    twice -= itself;
    EXPECT_EQ(twice, exponents());
}

TEST(exponents, give_a_result_that_can_be_used_further) {
    exponents result;
    ((result += sample) -= exponents{1, 0, 0, 0, 0, 0, 0, 0}) *= 2.0;
    EXPECT_EQ(result, (exponents{0, -4, 6, 1, -0.5, 12, -14, 16}));
}

TEST(exponents, are_equal_only_if_all_eight_are) {
    EXPECT_EQ(sample, sample);
    for (std::size_t i = 0; i < 8; ++i) {
        exponents other = sample;
        other[i] = std::nextafter(other[i], 100.0);
        EXPECT_NE(other, sample) << i;
    }
}

TEST(exponents, are_equal_whatever_the_sign_of_a_zero) {
    EXPECT_EQ((exponents{-0.0, 0, 0, 0, 0, 0, 0, 0}), exponents());
}

TEST(exponents, with_a_not_a_number_equal_nothing) {
    exponents undefined;
    undefined[dim_length] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(undefined, undefined);
}

} // namespace
