// The built-ins without arguments: their values to the last digit, and their units.

#include "tests/functions/calling.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;
using namespace metrify::test;

TEST(constants, have_their_values_and_exponents) {
    const struct {
        const char* name;
        dim_value value;
    } rows[] = {
        {"pi", scalar(3.141592653589793)},
        {"euler", scalar(0.5772156649015329)},
        {"CLight", scalar(299792458.0, {0, -1, 0, 1})},
        {"grav", scalar(9.806652, {0, -2, 0, 1})},
        {"GEarth", scalar(6.67428e-11, {0, -2, -1, 3})},
        {"Planck", scalar(6.62606896e-34, {0, -1, 1, 2})},
        {"Boltzmann", scalar(1.38065e-23, {0, -2, 1, 2, -1})},
        {"StefanBoltzmann", scalar(5.6704e-08, {0, -3, 1, 0, -4})},
        {"gas", scalar(8.31434, {0, -2, 1, 2, -1, -1})},
    };
    for (const auto& row : rows) {
        const outcome result = call(row.name, {});
        EXPECT_TRUE(equal(result.value, row.value)) << row.name;
        EXPECT_EQ(result.err, "") << row.name;
        EXPECT_EQ(result.depth, 2U) << row.name;
    }
}

TEST(constants, take_part_in_expressions) {
    constexpr expectation lines[] = {
        {"pi()", "= 3.14159"},
        {"2*pi()", "= 6.28319"},
        {"grav() * 2 s ; m/s", "= 19.6133 m/s"},
        {"CLight() ; m/s", "= 2.99792e+08 m/s"},
    };
    expect_answers(lines);
}

} // namespace
