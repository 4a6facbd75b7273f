#include "cli/lookup/also.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace metrify;

std::string also(double val, std::string_view in_units, std::string_view shown,
                 const std::string& definitions = {}) {
    std::ostringstream out;
    write_in_common_units(val, in_units, shown, definitions, out);
    return out.str();
}

TEST(common_units, come_best_scaled_first) {
    EXPECT_EQ(also(68, "km", "m"), "  42.2532 mi\n  74365.7 yd\n  223097 ft\n");
}

TEST(common_units, leave_out_the_given_and_the_shown_one_in_any_spelling) {
    EXPECT_EQ(also(68, "kilometers", "mile"), "  68000 m\n  74365.7 yd\n  223097 ft\n");
}

TEST(common_units, have_the_offset_of_a_temperature) {
    EXPECT_EQ(also(20, "degC", "degF"), "  293.15 degK\n  527.67 degR\n");
}

TEST(common_units, of_an_extreme_quantity_are_the_best_one_alone) {
    EXPECT_EQ(also(1, "lightyear", "m"), "  5.87851e+12 mi\n");
}

TEST(common_units, are_those_of_a_user_unit_too) {
    EXPECT_EQ(also(1, "fortnight", "s", "DefUnit(fortnight, 14 day)"),
              "  2 week\n  14 day\n  336 hr\n  20160 min\n  0.0383307 year\n");
}

TEST(common_units, are_none_for_a_dimension_without_a_name_or_a_text_that_is_no_unit) {
    EXPECT_EQ(also(1, "m^7", "m^7"), "");
    EXPECT_EQ(also(1, "foo", "m"), "");
}

} // namespace
