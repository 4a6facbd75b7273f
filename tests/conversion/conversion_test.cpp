#include "conversion/conversion.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace metrify;

constexpr double infinite = std::numeric_limits<double>::infinity();

void expect_converted(const conversion& cells, double number, std::string_view text) {
    EXPECT_EQ(cells.outcome, conversion_outcome::converted);
    EXPECT_EQ(cells.number, number);
    EXPECT_EQ(cells.text, text);
}
void expect_error(const conversion& cells, std::string_view text) {
    EXPECT_EQ(cells.outcome, conversion_outcome::error);
    EXPECT_EQ(cells.text, text);
}

// The line and its answer.

TEST(conversion, runs_one_line_of_the_number_and_the_two_texts) {
    EXPECT_EQ(convert_units_by_line(3.5, "ft", "m").answer->view(),
              "[  1 ] 3.5 ft; m\n        = 1.0668 m\n\n");
    EXPECT_EQ(convert_units_by_line(3.5, "ft", "").answer->view(), "[  1 ] 3.5 ft; \n        = 1.0668 m\n\n");
    EXPECT_EQ(convert_units_by_line(3.5, "", "").answer->view(), "[  1 ] 3.5 ; \n        = 3.5 \n\n");
    EXPECT_EQ(convert_units_by_line(3.5, "xyz", "m").answer->view(),
              "[  1 ] 3.5 xyz; m\n       ERROR: 'xyz' undefined.\n\n");
    EXPECT_EQ(convert_units_by_line(3.5, "ft", "kg").answer->view(),
              "[  1 ] 3.5 ft; kg\n       ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n"
              "        = 1.0668 m\n\n");
    EXPECT_EQ(convert_units_by_line(3.5, "ft", "xyz").answer->view(),
              "[  1 ] 3.5 ft; xyz\n       ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n"
              "        = 1.0668 m\n\n");
}

TEST(conversion, rounds_the_value_to_six_digits) {
    expect_converted(convert_units(1234567.8, "m", "m"), 1.23457e+06, "m\n\n");
    expect_converted(convert_units(1.0 / 3.0, "m", "m"), 0.333333, "m\n\n");
}

// The answer.

TEST(conversion, gives_number_and_unit) {
    expect_converted(convert_units(3.5, "ft", "m"), 1.0668, "m\n\n");
}
TEST(conversion, uses_default_units_if_none_are_requested) {
    expect_converted(convert_units(3.5, "ft", ""), 1.0668, "m\n\n");
}
TEST(conversion, gives_a_number_without_a_unit) {
    expect_converted(convert_units(3.5, "", ""), 3.5, "\n\n");
}
TEST(conversion, of_zero_degrees_is_no_error) {
    expect_converted(convert_units(0, "degC", "degF"), 32, "degF\n\n");
}
TEST(conversion, accepts_a_system_as_output_units) {
    expect_converted(convert_units(1, "ft", "MKS"), 0.3048, "m\n\n");
}
TEST(conversion, keeps_further_requests_in_the_unit_text) {
    const conversion cells = convert_units(3.5, "ft", "m; cm");
    EXPECT_NE(cells.answer->view().find(" = 1.0668 m = 106.68 cm"), std::string_view::npos);
    expect_converted(cells, 1.0668, "m = 106.68 cm\n\n");
}
TEST(conversion, uses_default_units_after_a_comment_that_hides_the_request) {
    expect_converted(convert_units(1, "ft # length", "cm"), 0.3048, "m\n\n");
}
TEST(conversion, gives_nothing_and_the_rest_of_the_text_for_a_vector) {
    const conversion cells = convert_units(1, "* [1, 2, 3] m", "");
    EXPECT_NE(cells.answer->view().find(" = [ 1 , 2 , 3 ] m"), std::string_view::npos);
    expect_converted(cells, 0, "1 , 2 , 3 ] m\n\n");
}
TEST(conversion, accepts_any_expression_as_units) {
    expect_converted(convert_units(2, "ft + 1 ft", "ft"), 3, "ft\n\n");
}
TEST(conversion, gives_a_negative_number) {
    expect_converted(convert_units(-40, "degC", "degF"), -40, "degF\n\n");
}
TEST(conversion, reads_infinities_as_the_listing_writes_them) {
    const conversion too_much = convert_units(1e300, "m * 1e300", "");
    expect_converted(too_much, infinite, "m\n\n");
    expect_converted(convert_units(-1e300, "m * 1e300", ""), -infinite, "m\n\n");
}
TEST(conversion, reads_a_not_a_number) {
    const conversion cells = convert_units(1, "* -1e400 * 0", "");
    EXPECT_EQ(cells.outcome, conversion_outcome::converted);
    EXPECT_TRUE(std::isnan(cells.number));
    EXPECT_EQ(cells.text, "\n\n");
}
TEST(conversion, replaces_the_first_blank_by_an_ampersand_before_it_searches_for_one) {
    expect_converted(convert_units(3.5, "ft", "cm=8&"), 8, "\n&       = 106.68 cm\n\n");
    expect_converted(convert_units(3.5, "ft", "cm=&8"), 0, "8\n&       = 106.68 cm\n\n");
    expect_converted(convert_units(3.5, "ft", "cm= &8"), 0, "8\n&       = 106.68 cm\n\n");
    expect_converted(convert_units(3.5, "ft", "cm=8 &"), 8, "&\n        = 106.68 cm\n\n");
}

// Errors.

TEST(conversion, gives_the_message_of_an_unknown_unit) {
    expect_error(convert_units(3.5, "xyz", "m"), "ERROR: 'xyz' undefined.\n\n");
}
TEST(conversion, cuts_off_the_value_after_a_failed_request) {
    expect_error(convert_units(3.5, "ft", "kg"), "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
    expect_error(convert_units(3.5, "ft", "xyz"), "ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n");
}
TEST(conversion, treats_a_typed_mark_as_an_error) {
    expect_error(convert_units(1, "ft # ERROR: mine", "m"), "ERROR: mine; m\n        = 0.3048 m\n\n");
}
TEST(conversion, treats_a_typed_mark_as_an_error_only_after_a_blank) {
    expect_converted(convert_units(1, "ft # xERROR", "m"), 0.3048, "m\n\n");
    expect_converted(convert_units(1, "ft #ERROR:", "m"), 0.3048, "m\n\n");
    expect_error(convert_units(1, "ft # xERROR ERROR", "m"), "ERROR; m\n");
}
TEST(conversion, has_no_text_if_a_typed_equals_sign_precedes_the_message) {
    expect_error(convert_units(3.5, "ft", "kg # = 3"), "");
}
TEST(conversion, of_infinite_values_gives_the_languages_message) {
    for (const double val : {infinite, -infinite, std::numeric_limits<double>::quiet_NaN()}) {
        const conversion cells = convert_units(val, "ft", "m");
        EXPECT_EQ(cells.outcome, conversion_outcome::error);
        EXPECT_EQ(cells.text.substr(0, 6), "ERROR:") << cells.text;
    }
}

// Line breaks in the texts make a program of several lines.

TEST(conversion, includes_the_following_lines_in_the_unit_text) {
    expect_converted(convert_units(1, "m\nx = 2 m", "m"), 1, "m\n\n[  2 ] x = 2 m; m\n       x = 2 m\n\n");
}
TEST(conversion, finds_a_message_on_any_line) {
    expect_error(convert_units(1, "m\nxyz", "m"), "ERROR: 'xyz' undefined.\n\n");
}

TEST(conversion, survives_texts_of_a_hundred_thousand_characters) {
    const std::string name(100000, 'a');
    const conversion cells = convert_units(1, name, "m");
    EXPECT_EQ(cells.outcome, conversion_outcome::error);
    EXPECT_EQ(cells.text, "ERROR: '" + name + "' undefined.\n\n");
}

TEST(conversion, is_independent_of_the_previous_one) {
    convert_units(1, "ft\nx = 3 m\nDefUnit(foo, 3 m)\nUnits(cgs)", "");
    expect_converted(convert_units(3.5, "ft", ""), 1.0668, "m\n\n");
    expect_error(convert_units(1, "foo", "m"), "ERROR: 'foo' undefined.\n\n");
}

// A report that an earlier run has left takes the place of the first statement's result. The block that it
// lists is gone, so that there is nothing but the echo, and an indent.

conversion after_a_failed_solve(std::string_view in_units, std::string_view out_units) {
    interpret_dimensional_input_lines("x = 2\nbegin\ny = x^2 + 1\nend\nsolve(y, x)");
    return convert_units(3.5, in_units, out_units);
}

TEST(conversion, has_no_outcome_if_a_report_takes_the_place_of_its_result) {
    const conversion cells = after_a_failed_solve("ft", "m");
    EXPECT_EQ(cells.answer->view(), "[  1 ] 3.5 ft; m\n       \n");
    EXPECT_EQ(cells.outcome, conversion_outcome::unmarked);
    EXPECT_EQ(cells.text, "");
}
TEST(conversion, gives_everything_after_a_typed_mark_if_there_is_no_equals_sign) {
    expect_error(after_a_failed_solve("ft # ERROR", "m"), "ERROR; m\n       \n");
}
TEST(conversion, has_no_unit_text_if_no_blank_follows_a_typed_equals_sign) {
    const conversion cells = after_a_failed_solve("ft", "\n#=");
    EXPECT_EQ(cells.answer->view(), "[  1 ] 3.5 ft; \n       \n\n#=\n\n");
    expect_converted(cells, 0, "");
}

} // namespace
