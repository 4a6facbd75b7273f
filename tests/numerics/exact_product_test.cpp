#include "numerics/special/bessel/exact_product.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(exact_product, rest_is_what_rounding_takes_off) {
    const double a = 1.0 + std::ldexp(1.0, -30);
    EXPECT_EQ(a * a, 1.0 + std::ldexp(1.0, -29));
    EXPECT_EQ(rest_of_product(a, a), std::ldexp(1.0, -60));
    const double least_above_1 = 1.0 + std::ldexp(1.0, -52);
    EXPECT_EQ(rest_of_product(least_above_1, -least_above_1), -std::ldexp(1.0, -104));
}

TEST(exact_product, rest_of_an_exact_product_is_0) {
    EXPECT_EQ(rest_of_product(3.0, 0.125), 0.0);
    EXPECT_EQ(rest_of_product(134217727.0, -67108863.0), 0.0);
}

TEST(exact_product, leading_digits_are_26) {
    const double digits = 67108863.0; // 26 ones
    EXPECT_EQ(leading_digits(digits), digits);
    EXPECT_EQ(leading_digits(digits + 0.5), digits);
    EXPECT_EQ(leading_digits(-digits - 0.5), -digits);
}

} // namespace
