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

TEST(common_units, have_everyday_scales) {
    EXPECT_EQ(also(11000, "V", "V"), "  11 kV\n  0.011 MV\n");
    EXPECT_EQ(also(4700, "ohm", "ohm"), "  4.7 kohm\n  0.0047 Mohm\n");
    EXPECT_EQ(also(5.5e-7, "m", "m"), "  550 nm\n  0.55 um\n");
    EXPECT_EQ(also(1e-10, "F", "F"), "  100 pF\n  0.1 nanofarad\n");
    EXPECT_EQ(also(2e9, "W", "W"), "  2 GW\n  2000 MW\n");
    EXPECT_EQ(also(0.005, "/ohm", "/ohm"), "  5 mS\n  5000 uS\n");
}

TEST(common_units, have_the_kilowatt_hour) {
    EXPECT_EQ(also(3.6e6, "J", "MJ").find("  1 kWh\n"), 0U);
}

TEST(common_units, leave_out_a_name_that_the_user_has_given_another_dimension) {
    EXPECT_EQ(also(11000, "V", "V", "DefUnit(kV, 3 m)"), "  0.011 MV\n");
}

TEST(common_units, of_an_extreme_quantity_are_the_best_one_alone) {
    EXPECT_EQ(also(1, "lightyear", "m"), "  5.87851e+12 mi\n");
}

TEST(common_units, are_all_equally_readable_for_zero) {
    EXPECT_EQ(also(0, "V", "V"), "  0 MV\n  0 kV\n  0 mV\n  0 microvolt\n");
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
