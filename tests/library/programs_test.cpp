// Programs, conversions and calculators through the C interface.

#include "tests/library/calls.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace {

using namespace metrify::test;

// A failed search, whose report is still due at its end.
constexpr std::string_view failed_solve = "x = 2\nbegin\ny = x^2 + 1\nend\nsolve(y, x)\n";
constexpr std::string_view with_zero_byte("1 m\0 2 m", 8);

TEST(library_run, gives_the_listing) {
    EXPECT_EQ(listing_of("x = 3 ft\nx; in\n"), "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n"
                                               "[  2 ] x; in\n        = 36 in\n\n");
}
TEST(library_run, shows_errors_in_the_listing) {
    EXPECT_EQ(listing_of("3 m; s"),
              "[  1 ] 3 m; s\n       ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n        = 3 m\n\n");
}
TEST(library_run, does_not_depend_on_an_earlier_run) {
    EXPECT_NE(listing_of(failed_solve).find("ERROR:"), std::string::npos);
    EXPECT_EQ(listing_of("1 m"), "[  1 ] 1 m\n        = 1 m\n\n");
}
TEST(library_run, of_an_empty_program_is_empty) {
    metrify_text* listing = nullptr;
    ASSERT_EQ(metrify_run(nullptr, 0, &listing), METRIFY_OK);
    EXPECT_EQ(taken(listing), "");
}
TEST(library_run, rejects_a_zero_byte) {
    metrify_text* listing = nullptr;
    EXPECT_EQ(metrify_run(with_zero_byte.data(), with_zero_byte.size(), &listing), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "a text contains a zero byte");
    EXPECT_EQ(listing, nullptr);
}
TEST(library_run, rejects_null_pointers) {
    metrify_text* listing = nullptr;
    EXPECT_EQ(metrify_run(nullptr, 1, &listing), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "a text is null");
    EXPECT_EQ(metrify_run("1", 1, nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the pointer to the result is null");
}
TEST(library_run, reads_no_further_than_the_size) {
    EXPECT_EQ(listing_of(std::string_view("1 m + 1 s").substr(0, 3)), "[  1 ] 1 m\n        = 1 m\n\n");
}

TEST(library_message, is_empty_after_a_call_that_succeeds) {
    metrify_run("1", 1, nullptr);
    EXPECT_STRNE(metrify_message(), "");
    listing_of("1");
    EXPECT_STREQ(metrify_message(), "");
}

TEST(library_text, of_a_null_handle_is_empty) {
    EXPECT_STREQ(metrify_text_data(nullptr), "");
    EXPECT_EQ(metrify_text_size(nullptr), 0U);
    metrify_text_free(nullptr);
}

TEST(library_convert, gives_the_two_cells) {
    const cells answer = converted(3.5, "ft", "m");
    EXPECT_EQ(answer.kind, METRIFY_KIND_NUMBER);
    EXPECT_EQ(answer.number, 1.0668);
    EXPECT_EQ(answer.text, "m\n\n");
}
TEST(library_convert, reads_six_significant_digits) {
    EXPECT_EQ(converted(1.23456789, "m", "m").number, 1.23457);
}
TEST(library_convert, shows_default_units_without_a_request) {
    const cells answer = converted(1, "kPa", "");
    EXPECT_EQ(answer.number, 1000);
    EXPECT_EQ(answer.text, "kg / m s^2\n\n");
}
TEST(library_convert, gives_the_message_of_an_error) {
    const cells answer = converted(3.5, "ft", "s");
    EXPECT_EQ(answer.kind, METRIFY_KIND_ERROR);
    EXPECT_TRUE(std::isnan(answer.number));
    EXPECT_EQ(answer.text, "ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n");
}
TEST(library_convert, does_not_depend_on_an_earlier_conversion) {
    // The failed search is the last statement.
    converted(1, std::string("m\n").append(failed_solve.substr(0, failed_solve.size() - 1)), "");
    EXPECT_EQ(converted(1, "m", "m").text, "m\n\n");
}
TEST(library_convert, rejects_bad_arguments) {
    metrify_cells* answer = nullptr;
    EXPECT_EQ(metrify_convert(1, "m", 1, with_zero_byte.data(), with_zero_byte.size(), &answer),
              METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "a text contains a zero byte");
    EXPECT_EQ(metrify_convert(1, nullptr, 1, "m", 1, &answer), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_convert(1, "m", 1, "m", 1, nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(answer, nullptr);
}
TEST(library_convert, null_cells_are_empty) {
    EXPECT_EQ(metrify_cells_kind(nullptr), METRIFY_KIND_EMPTY);
    EXPECT_TRUE(std::isnan(metrify_cells_number(nullptr)));
    EXPECT_STREQ(metrify_cells_text(nullptr), "");
    EXPECT_EQ(metrify_cells_text_size(nullptr), 0U);
    metrify_cells_free(nullptr);
}

TEST(library_calculator, keeps_variables_units_and_the_block) {
    calculator_handle used;
    EXPECT_EQ(used.enter("x = 3 ft"), "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n");
    used.enter("DefUnit(ell, 18 in)\ncgs");
    EXPECT_NE(used.enter("x").find(" = 91.44 cm"), std::string::npos);
    EXPECT_NE(used.enter("2 ell; in").find(" = 36 in"), std::string::npos);
    used.enter("y = 4");
    used.enter("begin\nz = y - 1\nend");
    EXPECT_NE(used.enter("solve(z, y)\ny").find(" y\n        = 1 "), std::string::npos);
}
TEST(library_calculator, forgets_everything_when_it_is_reset) {
    calculator_handle used;
    used.enter("x = 3 ft\ncgs");
    ASSERT_EQ(metrify_calculator_reset(used.get()), METRIFY_OK);
    EXPECT_EQ(used.enter("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
    EXPECT_NE(used.enter("1 m").find("[  1 ] 1 m\n        = 1 m"), std::string::npos);
}
TEST(library_calculator, is_independent_of_others) {
    calculator_handle a;
    calculator_handle b;
    a.enter("x = 1 m");
    b.enter("x = 2 s");
    EXPECT_EQ(a.enter("x"), "[  2 ] x\n        = 1 m\n\n");
    EXPECT_EQ(b.enter("x"), "[  2 ] x\n        = 2 s\n\n");
}
TEST(library_calculator, rejects_bad_arguments) {
    calculator_handle used;
    metrify_text* listing = nullptr;
    EXPECT_EQ(metrify_calculator_enter(used.get(), with_zero_byte.data(), with_zero_byte.size(), &listing),
              METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "a text contains a zero byte");
    EXPECT_EQ(metrify_calculator_enter(nullptr, "1", 1, &listing), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the calculator is null");
    EXPECT_EQ(listing, nullptr);
    EXPECT_EQ(metrify_calculator_enter(used.get(), "1", 1, nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_calculator_reset(nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_calculator_new(nullptr), METRIFY_BAD_ARGUMENT);
    metrify_calculator_free(nullptr);
}

} // namespace
