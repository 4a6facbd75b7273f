#include "numerics/special/hyperbolic.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace metrify;

struct known_values {
    double x, sine, cosine, tangent;
};

// Rounded from values of 60 digits computed with mpmath.
constexpr known_values known[] = {
    {1e-300, 1e-300, 1.0, 1e-300},
    {1e-09, 1e-09, 1.0, 1e-09},
    {0.01, 0.010000166667500003, 1.0000500004166681, 0.00999966667999946},
    {0.25, 0.2526123168081683, 1.0314130998795732, 0.24491866240370913},
    {0.5, 0.5210953054937474, 1.1276259652063807, 0.46211715726000974},
    {0.9375, 1.0809919156930639, 1.472597542369863, 0.7340715196043415},
    {1.0, 1.1752011936438014, 1.5430806348152437, 0.7615941559557649},
    {1.0625, 1.2740025957973933, 1.6195933483743676, 0.7866188121086977},
    {1.5, 2.1292794550948173, 2.352409615243247, 0.9051482536448664},
    {3.0, 10.017874927409903, 10.067661995777765, 0.9950547536867305},
    {7.25, 704.0520690151534, 704.0527791895422, 0.9999989913051835},
    {18.5, 54127493.87511537, 54127493.87511538, 0.9999999999999998},
    {300.0, 9.712131976206279e+129, 9.712131976206279e+129, 1.0},
    {709.5, 6.774931596573164e+307, 6.774931596573164e+307, 1.0},
    {710.25, 1.4342530302495124e+308, 1.4342530302495124e+308, 1.0},
};

TEST(hyperbolic_functions, have_their_known_values_on_either_side) {
    constexpr double bound = 2.0 * std::numeric_limits<double>::epsilon();
    for (const known_values& at : known) {
        for (const double side : {1.0, -1.0}) {
            EXPECT_NEAR(hyperbolic_sine(side * at.x) / (side * at.sine), 1.0, bound) << at.x;
            EXPECT_NEAR(hyperbolic_cosine(side * at.x) / at.cosine, 1.0, bound) << at.x;
            EXPECT_NEAR(hyperbolic_tangent(side * at.x) / (side * at.tangent), 1.0, bound) << at.x;
        }
    }
}

TEST(hyperbolic_functions, of_one_half_are_exact_to_the_last_bit) {
    EXPECT_EQ(hyperbolic_sine(0.5), 0.5210953054937474);
    EXPECT_EQ(hyperbolic_cosine(0.5), 1.1276259652063807);
    EXPECT_EQ(hyperbolic_tangent(0.5), 0.46211715726000974);
}

TEST(hyperbolic_functions, keep_the_sign_of_zero_infinities_and_nans) {
    EXPECT_TRUE(std::signbit(hyperbolic_sine(-0.0)));
    EXPECT_TRUE(std::signbit(hyperbolic_tangent(-0.0)));
    EXPECT_EQ(hyperbolic_cosine(0.0), 1.0);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double x : {711.0, infinity}) {
        EXPECT_EQ(hyperbolic_sine(x), infinity);
        EXPECT_EQ(hyperbolic_sine(-x), -infinity);
        EXPECT_EQ(hyperbolic_cosine(-x), infinity);
        EXPECT_EQ(hyperbolic_tangent(-x), -1.0);
    }
    const double no_number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(hyperbolic_sine(no_number)));
    EXPECT_TRUE(std::isnan(hyperbolic_cosine(no_number)));
    EXPECT_TRUE(std::isnan(hyperbolic_tangent(no_number)));
}

} // namespace
