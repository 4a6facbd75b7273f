#include "cli/lookup/names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(edit_distance, counts_insertions_deletions_replacements_and_swaps) {
    EXPECT_EQ(edit_distance("meter", "meter"), 0U);
    EXPECT_EQ(edit_distance("mter", "meter"), 1U);
    EXPECT_EQ(edit_distance("metter", "meter"), 1U);
    EXPECT_EQ(edit_distance("mater", "meter"), 1U);
    EXPECT_EQ(edit_distance("metre", "meter"), 1U);
    EXPECT_EQ(edit_distance("", "abc"), 3U);
    EXPECT_EQ(edit_distance("kitten", "sitting"), 3U);
}

TEST(edit_distance, ignores_case) {
    EXPECT_EQ(edit_distance("MPH", "mph"), 0U);
}

TEST(nearest_names, come_in_the_order_of_their_distance) {
    EXPECT_THAT(nearest_names("fathon", {"acre", "fathoms", "fathom"}), ElementsAre("fathom", "fathoms"));
}

TEST(nearest_names, are_at_most_three) {
    EXPECT_EQ(nearest_names("abcd", {"abc1", "abc2", "abc3", "abc4"}).size(), 3U);
}

TEST(nearest_names, differ_by_one_character_more_than_the_nearest_at_most) {
    EXPECT_THAT(nearest_names("kilometrs", {"kilometers", "kilometer", "kilowatts"}),
                ElementsAre("kilometers", "kilometer"));
}

TEST(nearest_names, include_those_that_begin_similarly) {
    EXPECT_THAT(nearest_names("besel", {"BesselJ", "sin"}), ElementsAre("BesselJ"));
}

TEST(nearest_names, differ_in_at_most_a_third_of_the_letters) {
    EXPECT_THAT(nearest_names("abcdef", {"abcdxyz"}), IsEmpty());
    EXPECT_THAT(nearest_names("xy", {"xz"}), IsEmpty());
}

TEST(names, are_those_of_units_functions_and_variables) {
    EXPECT_TRUE(is_unit_name("ft"));
    EXPECT_TRUE(is_unit_name("%"));
    EXPECT_FALSE(is_unit_name("ft2"));
    EXPECT_FALSE(is_unit_name("ft m"));
    EXPECT_FALSE(is_unit_name(""));
    EXPECT_TRUE(is_function_name("BesselJ"));
    EXPECT_FALSE(is_function_name("ft"));
    EXPECT_FALSE(is_variable_name("ft"));
}

} // namespace
