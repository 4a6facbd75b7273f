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
    EXPECT_LE(std::fabs(sine(1e300)), 1.0);
}

} // namespace
