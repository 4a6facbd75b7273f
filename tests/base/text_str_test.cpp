#include "base/text_str.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace metrify;

/// Owner of a text that is made as long as it is needed.
struct owned_text {
    explicit owned_text(std::size_t size = 1024, std::size_t grow_by = 1024)
        : str(allocate_and_init_str_kelb(size, grow_by)) {}
    ~owned_text() { str_free(str); }
    owned_text(const owned_text&) = delete;
    owned_text& operator=(const owned_text&) = delete;

    void append(std::string_view text) { str = str_append_text(&str, text); }

    text_str* str;
};

std::string characters(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

TEST(text_str, is_empty_when_new) {
    const owned_text s;
    EXPECT_TRUE(str_is_empty(s.str));
    EXPECT_STREQ(s.str->text, "");
    EXPECT_EQ(s.str->capacity, 1024u);
    EXPECT_EQ(s.str->grow_by, 1024u);
}

TEST(text_str, is_terminated_after_the_appended_text) {
    owned_text s;
    s.append("one");
    s.append(" two");
    EXPECT_STREQ(s.str->text, "one two");
    EXPECT_EQ(str_view(s.str), "one two");
    EXPECT_FALSE(str_is_empty(s.str));
}

TEST(text_str, keeps_1022_characters_in_a_capacity_of_1024) {
    owned_text s;
    text_str* const handle = s.str;
    s.append(characters(1022));
    EXPECT_EQ(s.str, handle);
    EXPECT_EQ(s.str->capacity, 1024u);
    EXPECT_EQ(str_view(s.str), characters(1022));
}

TEST(text_str, moves_to_2048_at_character_1023) {
    owned_text s;
    s.append(characters(1022));
    s.append("!");
    EXPECT_EQ(s.str->capacity, 2048u);
    EXPECT_EQ(s.str->grow_by, 1024u);
    EXPECT_EQ(str_view(s.str), characters(1022) + "!");
    EXPECT_EQ(std::strlen(s.str->text), 1023u);
}

TEST(text_str, moves_when_1023_characters_come_at_once) {
    owned_text s;
    s.append(characters(1023));
    EXPECT_EQ(s.str->capacity, 2048u);
    EXPECT_EQ(str_view(s.str), characters(1023));
}

TEST(text_str, grows_by_as_many_steps_as_the_text_needs) {
    owned_text s;
    s.append(characters(5000)); // 5000 + 1 + 1 bytes
    EXPECT_EQ(s.str->capacity, 5120u);
    EXPECT_EQ(str_view(s.str), characters(5000));
}

TEST(text_str, grows_by_its_own_step) {
    owned_text s(16, 10);
    s.append(characters(14));
    EXPECT_EQ(s.str->capacity, 16u);
    s.append("x");
    EXPECT_EQ(s.str->capacity, 26u);
    s.append(characters(9)); // 24 characters: the last that fit
    EXPECT_EQ(s.str->capacity, 26u);
    s.append(characters(31)); // 55 characters, 57 bytes
    EXPECT_EQ(s.str->capacity, 66u);
    EXPECT_EQ(s.str->grow_by, 10u);
    EXPECT_EQ(str_view(s.str), characters(14) + "x" + characters(9) + characters(31));
}

TEST(text_str, grows_by_the_steps_it_needs_and_no_more) {
    owned_text exact(16, 8);
    exact.append(characters(22)); // 24 bytes
    EXPECT_EQ(exact.str->capacity, 24u);
    owned_text one_more(16, 8);
    one_more.append(characters(23));
    EXPECT_EQ(one_more.str->capacity, 32u);
}

TEST(text_str, keeps_its_capacity_when_cleared) {
    owned_text s(16, 16);
    s.append(characters(40));
    const std::size_t capacity = s.str->capacity;
    str_clear(&s.str);
    EXPECT_TRUE(str_is_empty(s.str));
    EXPECT_STREQ(s.str->text, "");
    EXPECT_EQ(s.str->capacity, capacity);
    s.append("again");
    EXPECT_STREQ(s.str->text, "again");
}

TEST(text_str, appends_a_range) {
    owned_text s;
    const char* text = "0123456789";
    s.str = str_append_range(&s.str, text + 2, text + 5);
    EXPECT_STREQ(s.str->text, "234");
}

TEST(text_str, appends_nothing_if_end_is_before_begin) {
    owned_text s;
    s.append("kept");
    const char* text = "0123456789";
    text_str* const handle = s.str;
    s.str = str_append_range(&s.str, text + 5, text + 2);
    EXPECT_EQ(s.str, handle);
    EXPECT_STREQ(s.str->text, "kept");
}

TEST(text_str, an_empty_range_leaves_a_full_buffer_where_it_is) {
    owned_text s;
    s.append(characters(1022));
    text_str* const handle = s.str;
    const char* text = "x";
    s.str = str_append_range(&s.str, text, text);
    EXPECT_EQ(s.str, handle);
    EXPECT_EQ(s.str->capacity, 1024u);
    EXPECT_EQ(str_view(s.str), characters(1022));
}

TEST(text_str, appends_the_text_of_another) {
    owned_text s;
    owned_text t;
    s.append("left ");
    t.append("right");
    s.str = str_append_str(&s.str, &t.str);
    EXPECT_STREQ(s.str->text, "left right");
    EXPECT_STREQ(t.str->text, "right");
}

TEST(text_str, appends_its_own_text) {
    owned_text s;
    s.append("twice ");
    s.str = str_append_str(&s.str, &s.str);
    EXPECT_STREQ(s.str->text, "twice twice ");
}

TEST(text_str, appends_its_own_text_while_it_grows) {
    owned_text s(16, 16);
    s.append(characters(14));
    for (int i = 0; i < 12; ++i)
        s.str = str_append_str(&s.str, &s.str);
    std::string expected;
    for (int i = 0; i < 4096; ++i)
        expected += characters(14);
    EXPECT_EQ(str_view(s.str), expected);
}

TEST(text_str, appends_a_part_of_its_own_text_while_it_grows) {
    owned_text s(16, 16);
    s.append(characters(14));
    s.str = str_append_range(&s.str, s.str->text + 3, s.str->text + 14);
    EXPECT_EQ(str_view(s.str), characters(14) + characters(14).substr(3));
}

TEST(text_str, appends_up_to_the_first_character_of_a_set) {
    owned_text s;
    s.str = str_append_until_any(&s.str, "foo\tbar baz", " \t");
    EXPECT_STREQ(s.str->text, "foo");
}

TEST(text_str, appends_all_of_a_text_without_a_character_of_the_set) {
    owned_text s;
    s.str = str_append_until_any(&s.str, "foobar", " \t");
    EXPECT_STREQ(s.str->text, "foobar");
}

TEST(text_str, appends_nothing_of_a_text_that_begins_with_the_set) {
    owned_text s;
    s.append("kept");
    s.str = str_append_until_any(&s.str, " foobar", " \t");
    EXPECT_STREQ(s.str->text, "kept");
}

TEST(text_str, appends_all_of_a_text_up_to_an_empty_set) {
    owned_text s;
    s.str = str_append_until_any(&s.str, "a b", "");
    EXPECT_STREQ(s.str->text, "a b");
}

TEST(text_str, appends_three_texts_and_stores_the_handle_itself) {
    owned_text s(4, 4);
    const text_str* const returned = str_append_three(&s.str, "ERROR: '", "name", "' undefined.\n");
    EXPECT_EQ(s.str, returned);
    EXPECT_STREQ(s.str->text, "ERROR: 'name' undefined.\n");
}

TEST(text_str, appends_numbers_in_six_significant_digits) {
    owned_text s;
    for (const double x : {3.0, 1.0 / 3.0, 1234567.8, -0.0001, 1e-5, 1e300}) {
        s.str = str_append_double(&s.str, x);
        s.append(" ");
    }
    EXPECT_STREQ(s.str->text, "3 0.333333 1.23457e+06 -0.0001 1e-05 1e+300 ");
}

TEST(text_str, appends_infinities_and_nans) {
    owned_text s;
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double x : {infinity, -infinity, nan, std::copysign(nan, -1.0)}) {
        s.str = str_append_double(&s.str, x);
        s.append(" ");
    }
    EXPECT_STREQ(s.str->text, "inf -inf nan nan ");
}

TEST(text_str, appends_whole_numbers) {
    owned_text s;
    for (const int n : {0, 7, -7, INT_MAX, INT_MIN}) {
        s.str = str_append_int(&s.str, n);
        s.append(" ");
    }
    EXPECT_STREQ(s.str->text, "0 7 -7 2147483647 -2147483648 ");
}

TEST(text_str, is_put_together_of_many_small_pieces) {
    owned_text s(2, 1);
    std::string expected;
    for (int i = 0; i < 300000; ++i) {
        const char piece[] = {static_cast<char>('a' + i % 26), '\0'};
        s.append(piece);
        expected += piece;
    }
    EXPECT_TRUE(str_view(s.str) == expected);
    EXPECT_EQ(s.str->capacity, expected.size() + 2); // one byte more than the text and its end mark
}

TEST(text_str, may_have_a_capacity_of_0_at_first) {
    owned_text s(0, 8);
    EXPECT_TRUE(str_is_empty(s.str));
    s.append("grown");
    EXPECT_STREQ(s.str->text, "grown");
}

TEST(work_text, is_empty_when_new) {
    const work_text s;
    EXPECT_TRUE(str_is_empty(s.str));
    EXPECT_EQ(s.view(), "");
    EXPECT_EQ(s.str->capacity, 1024u);
}

TEST(work_text, grows_as_any_text_does) {
    work_text s;
    s.append(characters(1022));
    EXPECT_EQ(s.str->capacity, 1024u);
    s.append("!");
    EXPECT_EQ(s.str->capacity, 2048u);
    s.append(characters(5000));
    EXPECT_EQ(s.view(), characters(1022) + "!" + characters(5000));
    EXPECT_EQ(std::strlen(s.str->text), s.view().size());
}

TEST(work_text, may_have_a_larger_capacity_from_the_start) {
    work_text s(3000, 100);
    text_str* const handle = s.str;
    s.append(characters(2998));
    EXPECT_EQ(s.str, handle);
    s.append("!");
    EXPECT_EQ(s.str->capacity, 3100u);
    EXPECT_EQ(s.view(), characters(2998) + "!");
}

TEST(work_text, may_have_a_smaller_capacity_than_its_first_block) {
    work_text s(16, 16);
    s.append(characters(14));
    EXPECT_EQ(s.str->capacity, 16u);
    s.append("x");
    EXPECT_EQ(s.str->capacity, 32u);
    EXPECT_EQ(s.view(), characters(14) + "x");
}

TEST(work_text, appends_its_own_text_while_it_grows) {
    work_text s;
    s.append(characters(700));
    for (int i = 0; i < 3; ++i)
        s.str = str_append_str(&s.str, &s.str);
    EXPECT_EQ(s.view(), characters(700) + characters(700) + characters(700) + characters(700) +
                            characters(700) + characters(700) + characters(700) + characters(700));
}

TEST(work_text, of_usual_length_has_no_allocated_block) {
    work_text text;
    EXPECT_FALSE(text.str->owns_block);
    text.append(characters(1022));
    EXPECT_FALSE(text.str->owns_block);
    text.append("x");
    EXPECT_TRUE(text.str->owns_block);
    EXPECT_TRUE(work_text(1025, 1024).str->owns_block);
}

} // namespace
