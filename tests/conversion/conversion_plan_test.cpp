#include "conversion/conversion_plan.h"
#include "language/driver.h"
#include "machine/calculator.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <numeric>
#include <span>
#include <vector>

namespace {

using metrify::conversion_plan;
using metrify::make_conversion_plan;

conversion_plan plan_of(std::string_view from, std::string_view to) {
    conversion_plan plan;
    std::string message;
    EXPECT_TRUE(make_conversion_plan(from, to, plan, message)) << message;
    return plan;
}

std::string message_of(std::string_view from, std::string_view to) {
    conversion_plan plan;
    std::string message;
    EXPECT_FALSE(make_conversion_plan(from, to, plan, message));
    EXPECT_TRUE(plan.slope == 1.0 && plan.intercept == 0.0 && plan.units.empty());
    return message;
}

/// A calculator of its own, on which these lines have been run.
struct prepared_calculator {
    explicit prepared_calculator(const char* lines) { metrify::run_further_lines(lines); }

  private:
    std::unique_ptr<metrify::calculator> own_ = std::make_unique<metrify::calculator>();
    metrify::calculator_scope scope_{*own_};
};

// A foot is 1/3.28083989501312 m.
TEST(conversion_plan, keeps_the_full_precision_of_a_double) {
    const conversion_plan plan = plan_of("ft", "m");
    EXPECT_NEAR(plan(3.5), 1.0668, 1e-14);
    EXPECT_NEAR(plan(1234567.8), 376296.26544, 1e-8);
}
TEST(conversion_plan, converts_temperatures_by_the_affine_rule) {
    EXPECT_NEAR(plan_of("degK", "degC")(300.0), 26.85, 1e-12);
    EXPECT_NEAR(plan_of("degK", "degF")(300.0), 80.33, 1e-12);
    EXPECT_NEAR(plan_of("degC", "degF")(100.0), 212.0, 1e-12);
    EXPECT_NEAR(plan_of("degF", "degC")(-40.0), -40.0, 1e-12);
}
TEST(conversion_plan, has_no_offset_for_a_temperature_inside_a_compound_unit) {
    EXPECT_EQ(plan_of("J/kg degC", "J/kg degK")(7.0), 7.0);
    EXPECT_NEAR(plan_of("degCdiff", "degFdiff")(10.0), 18.0, 1e-14);
}
TEST(conversion_plan, returns_a_number_unchanged_if_both_units_are_the_same) {
    for (const char* unit : {"degC", "degF", "ft", "ksi"})
        EXPECT_EQ(plan_of(unit, unit)(0.1), 0.1) << unit;
    EXPECT_TRUE(std::signbit(plan_of("ft", "m")(-0.0)));
}
TEST(conversion_plan, converts_infinities_and_not_a_number) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(plan_of("ft", "m")(-infinity), -infinity);
    EXPECT_TRUE(std::isnan(plan_of("degC", "degF")(std::nan(""))));
}

TEST(conversion_plan, reads_compound_units) {
    EXPECT_NEAR(plan_of("kg m / s^2", "N")(3.0), 3.0, 1e-14);
    EXPECT_EQ(plan_of(" (m / s) kg ", "N s")(2.0), 2.0);
}
TEST(conversion_plan, takes_empty_units_for_a_plain_number) {
    EXPECT_EQ(plan_of("", "")(2.5), 2.5);
    EXPECT_EQ(plan_of("", "").units, "");
}

TEST(conversion_plan, shows_the_requested_units_without_blanks_around_them) {
    EXPECT_EQ(plan_of("ft/s", " km / hr ").units, "km / hr");
}
TEST(conversion_plan, converts_to_the_default_units_without_a_request) {
    const conversion_plan plan = plan_of("ft", " ");
    EXPECT_EQ(plan.units, "m");
    EXPECT_NEAR(plan(10.0), 3.048, 1e-14);
}
TEST(conversion_plan, converts_to_the_units_of_a_named_system) {
    const conversion_plan plan = plan_of("N", "cgs");
    EXPECT_EQ(plan.units, "g cm / s^2");
    EXPECT_NEAR(plan(2.0), 200000.0, 1e-9);
    EXPECT_EQ(plan_of("m", " IPS ").units, "in");
}
TEST(conversion_plan, shows_a_difference_inside_a_compound_unit_as_a_temperature) {
    EXPECT_EQ(plan_of("J/kg degKdiff", "").units, "m^2 / s^2 degK");
}
// A temperature difference alone is written degF in IPS, which has an offset.
TEST(conversion_plan, keeps_the_offset_of_a_difference_in_inches_and_pounds) {
    EXPECT_NEAR(plan_of("degKdiff", "IPS")(10.0), 10.0 * 1.8 - 459.67, 1e-12);
}

TEST(conversion_plan, knows_the_units_and_default_units_of_the_calculator_in_use) {
    const prepared_calculator calculator("DefUnit(ell, 18 in)\nMKS(ft)\n");
    EXPECT_NEAR(plan_of("ell", "in")(2.0), 36.0, 1e-12);
    EXPECT_EQ(plan_of("ell", "").units, "ft");
    EXPECT_EQ(message_of("ell stride", "m"), "ERROR: 'stride' undefined.\n");
}
TEST(conversion_plan, ignores_angle_and_amount_of_substance) {
    EXPECT_EQ(plan_of("rad/s", "/ s")(2.0), 2.0);
    EXPECT_EQ(plan_of("mol", "")(2.0), 2.0);
}

TEST(conversion_plan, reports_an_unknown_source) {
    EXPECT_EQ(message_of("xyz", "m"), "ERROR: 'xyz' undefined.\n");
    EXPECT_EQ(message_of("ft xyz", "m"), "ERROR: 'xyz' undefined.\n");
}
TEST(conversion_plan, reports_an_unknown_target) {
    EXPECT_EQ(message_of("ft", "xyz"), "ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n");
    EXPECT_EQ(message_of("ft", "m xyz"), "ERROR IN REQUESTED OUTPUT: 'm xyz' not recognized.\n");
    EXPECT_EQ(message_of("ft", "m; cm"), "ERROR IN REQUESTED OUTPUT: 'm; cm' not recognized.\n");
    EXPECT_EQ(message_of("ft", "mks"), "ERROR IN REQUESTED OUTPUT: 'mks' not recognized.\n");
}
TEST(conversion_plan, reports_incompatible_units) {
    EXPECT_EQ(message_of("ft", "kg"), "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
}
TEST(conversion_plan, refuses_an_expression_that_is_more_than_units) {
    constexpr std::string_view begin = "ERROR: Syntax error -- Unexpected input continuation '";
    for (const char* from : {"ft + 2 ft", "ft # length", "ft; cm", "^2", "* 2 ft", "ft\n"})
        EXPECT_EQ(message_of(from, "m"), std::string(begin) + from + "'.\n");
}
TEST(conversion_plan, does_not_change_the_calculator_when_it_reports_a_source) {
    const prepared_calculator calculator("begin\nx = 1\ny = x - 3\nend\n");
    message_of("ft + solve(y, x", "m");
    message_of("ft + solve(y, x)", "m");
    EXPECT_EQ(metrify::run_further_lines("x").view(), "[  4 ] x\n        = 1 \n\n");
}

TEST(conversion_plan, converts_spans_of_any_length) {
    const conversion_plan plan = plan_of("degC", "degF");
    for (std::size_t size = 0; size < 35; ++size) {
        std::vector<double> from(size);
        std::iota(from.begin(), from.end(), -7.25);
        std::vector<double> to(size);
        plan.apply(from, to);
        for (std::size_t i = 0; i < size; ++i)
            EXPECT_EQ(to[i], plan(from[i])) << i << " of " << size;
    }
}
TEST(conversion_plan, writes_nothing_after_the_span) {
    const conversion_plan plan = plan_of("km", "m");
    const std::array<double, 17> from = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    for (std::size_t size = 0; size < from.size(); ++size) {
        std::array<double, 17> to;
        to.fill(-1.0);
        plan.apply(std::span(from).first(size), std::span(to).first(size));
        for (std::size_t i = size; i < to.size(); ++i)
            EXPECT_EQ(to[i], -1.0) << i << " of " << size;
    }
}
TEST(conversion_plan, converts_a_span_in_place) {
    std::vector<double> numbers(19, 10.0);
    plan_of("km", "m").apply(numbers, numbers);
    EXPECT_EQ(numbers, std::vector<double>(19, 10000.0));
}
TEST(conversion_plan, converts_one_column_of_a_table) {
    const std::array<double, 6> table = {1, 100, 2, 200, 3, 300};
    std::array<double, 3> column = {};
    plan_of("km", "m").apply(table.data(), 2, column.data(), 1, 3);
    EXPECT_EQ(column, (std::array<double, 3>{1000, 2000, 3000}));
    plan_of("m", "m").apply(table.data() + 5, -2, column.data(), 1, 3);
    EXPECT_EQ(column, (std::array<double, 3>{300, 200, 100}));
}

} // namespace
