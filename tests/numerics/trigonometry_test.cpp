#include "numerics/special/trigonometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace {

using namespace metrify;

// The differences between multiples of pi and the nearest doubles, to 17 digits.
TEST(trigonometry, is_exact_next_to_multiples_of_half_a_turn) {
    EXPECT_DOUBLE_EQ(sine(std::numbers::pi), 1.2246467991473532e-16);
    EXPECT_DOUBLE_EQ(sine(2 * std::numbers::pi), -2.4492935982947064e-16);
    EXPECT_DOUBLE_EQ(sine(3 * std::numbers::pi), 3.6739403974420594e-16);
    EXPECT_DOUBLE_EQ(cosine(std::numbers::pi / 2), 6.1232339957367660e-17);
    EXPECT_DOUBLE_EQ(sine(-std::numbers::pi), -1.2246467991473532e-16);
    EXPECT_DOUBLE_EQ(tangent(std::numbers::pi), -1.2246467991473532e-16);
    EXPECT_DOUBLE_EQ(tangent(std::numbers::pi / 2), 1.6331239353195370e+16);
}

TEST(trigonometry, has_its_known_values) {
    const double root = std::sqrt(0.5);
    for (int turns = -100; turns <= 100; ++turns) {
        const double full = 2 * std::numbers::pi * turns;
        EXPECT_NEAR(sine(full + std::numbers::pi / 6), 0.5, 1e-13) << turns;
        EXPECT_NEAR(cosine(full + std::numbers::pi / 3), 0.5, 1e-13) << turns;
        EXPECT_NEAR(sine(full + 3 * std::numbers::pi / 4), root, 1e-13) << turns;
        EXPECT_NEAR(cosine(full + 3 * std::numbers::pi / 4), -root, 1e-13) << turns;
        EXPECT_NEAR(sine(full + 5 * std::numbers::pi / 4), -root, 1e-13) << turns;
        EXPECT_NEAR(cosine(full + 7 * std::numbers::pi / 4), root, 1e-13) << turns;
        EXPECT_NEAR(tangent(full + 3 * std::numbers::pi / 4), -1.0, 1e-12) << turns;
    }
}

TEST(trigonometry, agrees_with_the_runtime_away_from_the_multiples) {
    for (double x = -1000.0; x < 1000.0; x += 0.37) {
        EXPECT_NEAR(sine(x), std::sin(x), 1e-14) << x;
        EXPECT_NEAR(cosine(x), std::cos(x), 1e-14) << x;
    }
}

// The third comes nearest to a multiple of pi/2 of all doubles, the last is the largest. Values by mpmath
// with 2400 bits.
TEST(trigonometry, reduces_large_angles_with_all_digits_of_pi) {
    const struct {
        double x, sine, cosine, tangent;
    } known[] = {{1e6, -0.34999350217129294, 0.9367521275331447, -0.373624453987599},
                 {3373259426.1305046, -1.314954487872237e-07, 0.9999999999999913, -1.3149544878722484e-07},
                 {5.319372648326541e+255, 1.0, -4.687165924254628e-19, -2.133485385753704e+18},
                 {1e22, -0.8522008497671888, 0.523214785395139, -1.6287782256068988},
                 {1.99584030953472e+292, 0.9288772080299611, -0.3703878135177564, -2.507850350712013},
                 {1.7976931348623157e+308, 0.004961954789184062, -0.9999876894265599, -0.004962015874444895}};
    for (const auto& at : known) {
        EXPECT_DOUBLE_EQ(sine(at.x), at.sine);
        EXPECT_DOUBLE_EQ(cosine(at.x), at.cosine);
        EXPECT_DOUBLE_EQ(tangent(at.x), at.tangent);
        EXPECT_DOUBLE_EQ(sine(-at.x), -at.sine);
        EXPECT_DOUBLE_EQ(cosine(-at.x), at.cosine);
        EXPECT_DOUBLE_EQ(tangent(-at.x), -at.tangent);
    }
}

TEST(trigonometry, keeps_the_sign_of_zero_and_nans) {
    EXPECT_TRUE(std::signbit(sine(-0.0)));
    EXPECT_EQ(cosine(0.0), 1.0);
    const double infinity = std::numeric_limits<double>::infinity();
    const double no_number = std::numeric_limits<double>::quiet_NaN();
    for (const double x : {infinity, -infinity, no_number}) {
        EXPECT_TRUE(std::isnan(sine(x)));
        EXPECT_TRUE(std::isnan(cosine(x)));
        EXPECT_TRUE(std::isnan(tangent(x)));
    }
}

} // namespace
