// The appending of several parts in one call.

#include "base/text_str.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>

namespace {

using namespace metrify;

TEST(append, adds_texts_and_numbers_in_their_order) {
    work_text s;
    append(s.str, "x = ", 2.5, " ", std::string_view("m"), "^", 2, "\n");
    EXPECT_EQ(s.view(), "x = 2.5 m^2\n");
}

TEST(append, adds_after_the_text_that_is_there) {
    work_text s;
    append(s.str, "one");
    append(s.str, ", ", "two");
    append(s.str, ", ", "three");
    EXPECT_EQ(s.view(), "one, two, three");
    EXPECT_EQ(s.str->length, 15U);
    EXPECT_EQ(std::strlen(s.str->text), 15U);
}

TEST(append, takes_a_single_part_of_each_kind) {
    work_text s;
    work_text other;
    append(other.str, "text");
    append(s.str, other.str);
    append(s.str, 1.5);
    append(s.str, -7);
    append(s.str, std::string(" of a string"));
    EXPECT_EQ(s.view(), "text1.5-7 of a string");
}

TEST(append, takes_another_growable_text_among_the_parts) {
    work_text s;
    work_text other;
    append(other.str, "middle");
    append(s.str, "<", other.str, ">");
    EXPECT_EQ(s.view(), "<middle>");
    EXPECT_EQ(other.view(), "middle");
}

TEST(append, writes_numbers_in_six_significant_digits) {
    work_text s;
    append(s.str, 1.0 / 3.0, " ", 1e100, " ", -0.0, " ", std::numeric_limits<double>::infinity(), " ",
           -std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(s.view(), "0.333333 1e+100 -0 inf nan");
}

TEST(append, writes_the_limits_of_an_int) {
    work_text s;
    append(s.str, std::numeric_limits<int>::min(), " ", std::numeric_limits<int>::max());
    EXPECT_EQ(s.view(), "-2147483648 2147483647");
}

TEST(append, leaves_a_text_to_which_nothing_is_added_unchanged) {
    work_text s;
    append(s.str, "text");
    append(s.str, "", std::string_view(), "");
    EXPECT_EQ(s.view(), "text");
}

TEST(append, keeps_zero_bytes_of_a_view) {
    work_text s;
    append(s.str, std::string_view("a\0b", 3), "c");
    EXPECT_EQ(s.view(), std::string_view("a\0bc", 4));
}

TEST(append, of_several_parts_moves_the_text_when_they_do_not_fit_together) {
    work_text s(16, 16);
    append(s.str, "0123456", "789abc");
    EXPECT_EQ(s.str->capacity, 16U);
    append(s.str, "d", "e");
    EXPECT_EQ(s.str->capacity, 32U);
    EXPECT_EQ(s.view(), "0123456789abcde");
    EXPECT_EQ(s.str->text[15], '\0');
}

TEST(append, of_several_parts_keeps_14_characters_in_a_capacity_of_16) {
    work_text s(16, 16);
    text_str* const handle = s.str;
    append(s.str, "0123456", "789abcd");
    append(s.str, "", "");
    EXPECT_EQ(s.str, handle);
    EXPECT_EQ(s.str->capacity, 16U);
}

TEST(append, of_several_parts_ends_the_text_inside_a_longer_earlier_one) {
    work_text s;
    append(s.str, "0123456789");
    str_clear(&s.str);
    append(s.str, "ab", "c");
    EXPECT_STREQ(s.str->text, "abc");
}

} // namespace
