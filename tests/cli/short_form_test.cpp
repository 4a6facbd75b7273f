#include "cli/short_form.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using arguments = std::vector<std::string>;
using metrify::conversion_words;
using metrify::with_convert_added;

TEST(short_form, of_a_conversion_begins_with_its_number) {
    EXPECT_EQ(with_convert_added({"3.5", "ft", "m"}), (arguments{"convert", "3.5", "ft", "m"}));
    EXPECT_EQ(with_convert_added({"-2e3", "m"}), (arguments{"convert", "-2e3", "m"}));
}

TEST(short_form, can_have_flags_before_the_number) {
    EXPECT_EQ(with_convert_added({"--flag", "3", "m"}), (arguments{"--flag", "convert", "3", "m"}));
}

TEST(short_form, can_have_the_option_for_further_units_before_the_number) {
    EXPECT_EQ(with_convert_added({"--also", "68", "km", "mi"}),
              (arguments{"convert", "--also", "68", "km", "mi"}));
}

TEST(short_form, adds_a_zero_to_a_negative_fraction) {
    EXPECT_EQ(with_convert_added({"-.5", "km"}), (arguments{"convert", "-0.5", "km"}));
    EXPECT_EQ(with_convert_added({"convert", "-.5", "km"}), (arguments{"convert", "-0.5", "km"}));
    EXPECT_EQ(with_convert_added({"-e", "-.5"}), (arguments{"-e", "-.5"}));
    EXPECT_EQ(with_convert_added({"-.x"}), (arguments{"-.x"}));
}

TEST(short_form, is_not_seen_in_the_value_of_an_option) {
    EXPECT_EQ(with_convert_added({"-e", "3"}), (arguments{"-e", "3"}));
    EXPECT_EQ(with_convert_added({"--execute", "3"}), (arguments{"--execute", "3"}));
}

TEST(short_form, follows_the_value_of_an_option) {
    EXPECT_EQ(with_convert_added({"--units", "own.units", "3", "pace"}),
              (arguments{"--units", "own.units", "convert", "3", "pace"}));
    EXPECT_EQ(with_convert_added({"--units"}), (arguments{"--units"}));
}

TEST(short_form, can_begin_with_a_text_that_only_resembles_a_number) {
    EXPECT_EQ(with_convert_added({"1/2", "in"}), (arguments{"convert", "1/2", "in"}));
}

TEST(short_form, can_begin_with_a_decimal_comma_and_a_sign) {
    EXPECT_EQ(with_convert_added({"-3,5", "ft"}), (arguments{"convert", "-3,5", "ft"}));
    EXPECT_EQ(with_convert_added({"+3,5", "ft"}), (arguments{"convert", "+3,5", "ft"}));
    EXPECT_EQ(with_convert_added({"-x3"}), (arguments{"-x3"}));
    EXPECT_EQ(with_convert_added({"-"}), (arguments{"-"}));
}

TEST(conversion_words, are_those_after_the_command_without_options) {
    EXPECT_EQ(conversion_words({"--hints", "convert", "--also", "3", "ft", "--units", "file", "->", "m"}),
              (arguments{"3", "ft", "->", "m"}));
    EXPECT_EQ(conversion_words({"convert", "3", "--units"}), (arguments{"3"}));
    EXPECT_EQ(conversion_words({"3", "ft"}), arguments{});
}

TEST(short_form, leaves_commands_as_they_are) {
    for (const arguments& given : {arguments{}, {"units", "3"}, {"--help"}, {"x3", "m"}, {""}})
        EXPECT_EQ(with_convert_added(given), given);
}

} // namespace
