#include "base/cursor.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace {

using namespace metrify;

/// A cursor into an owned text, with an extra end after `length` characters if that is given.
class at {
  public:
    explicit at(std::string text, std::size_t length = std::string::npos)
        : text_(std::move(text)),
          p(text_.c_str(), length == std::string::npos ? nullptr : text_.c_str() + length) {}
    at(const at&) = delete;
    at& operator=(const at&) = delete;

    /// How far the cursor has moved.
    std::size_t moved() const { return static_cast<std::size_t>(p.at - text_.c_str()); }

    cursor after(std::size_t characters) const { return cursor(text_.c_str() + characters, p.stop); }

  private:
    std::string text_;

  public:
    cursor p;
};

template <class Mover>
std::size_t distance(Mover mover, const std::string& text, std::size_t length = std::string::npos) {
    at a(text, length);
    mover(a.p);
    return a.moved();
}

// Characters.

TEST(characters, are_blank_if_they_are_a_space_or_a_tab) {
    for (int c = -128; c < 128; ++c)
        EXPECT_EQ(is_blank(static_cast<char>(c)), c == ' ' || c == '\t') << c;
}

TEST(characters, are_name_characters_if_they_are_a_letter_a_digit_or_an_underscore) {
    const std::string members = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    for (int c = -128; c < 128; ++c) {
        const char character = static_cast<char>(c);
        EXPECT_EQ(is_name_char(character), members.find(character) != std::string::npos) << c;
        EXPECT_EQ(is_letter(character), members.substr(0, 52).find(character) != std::string::npos) << c;
    }
}

TEST(characters, are_folded_from_A_to_Z_only) {
    EXPECT_EQ(fold_case('A'), 'a');
    EXPECT_EQ(fold_case('Z'), 'z');
    for (const char c : {'a', '@', '[', '_', '0', '\xc4', '\xe4'})
        EXPECT_EQ(fold_case(c), c);
}

// Positions.

TEST(positions, end_the_text_at_the_end_mark_and_at_the_stop_pointer) {
    const at a("ab\n;#", 1);
    EXPECT_FALSE(at_text_end(a.after(0)));
    EXPECT_TRUE(at_text_end(a.after(1)));
    EXPECT_FALSE(at_text_end(a.after(2)));
    EXPECT_TRUE(at_text_end(a.after(5)));
}

TEST(positions, end_the_line_at_a_newline_as_well) {
    const at a("ab\n;#\r", 1);
    EXPECT_FALSE(at_line_end(a.after(0)));
    EXPECT_TRUE(at_line_end(a.after(1)));
    EXPECT_TRUE(at_line_end(a.after(2)));
    EXPECT_FALSE(at_line_end(a.after(3)));
    EXPECT_FALSE(at_line_end(a.after(4)));
    EXPECT_FALSE(at_line_end(a.after(5)));
    EXPECT_TRUE(at_line_end(a.after(6)));
}

TEST(positions, end_the_statement_at_a_semicolon_and_a_hash_as_well) {
    const at a("ab\n;#,", 1);
    EXPECT_FALSE(at_statement_end(a.after(0)));
    for (const std::size_t place : {1u, 2u, 3u, 4u, 6u})
        EXPECT_TRUE(at_statement_end(a.after(place))) << place;
    EXPECT_FALSE(at_statement_end(a.after(5)));
}

TEST(positions, know_no_stop_pointer_unless_one_is_set) {
    const at a("ab");
    EXPECT_FALSE(at_stop_pointer(a.after(0)));
    EXPECT_FALSE(at_stop_pointer(a.after(1)));
    EXPECT_FALSE(at_stop_pointer(a.after(2)));
}

// Movers.

TEST(accept_char, moves_after_the_character_if_advance_is_set) {
    at a("(x");
    EXPECT_TRUE(accept_char(false, '(', a.p));
    EXPECT_EQ(a.moved(), 0u);
    EXPECT_TRUE(accept_char(true, '(', a.p));
    EXPECT_EQ(a.moved(), 1u);
}

TEST(accept_char, stays_on_another_character) {
    at a("(x");
    EXPECT_FALSE(accept_char(true, ')', a.p));
    EXPECT_EQ(a.moved(), 0u);
}

TEST(accept_char, never_accepts_the_terminator) {
    at a("");
    EXPECT_FALSE(accept_char(true, '\0', a.p));
    EXPECT_EQ(a.moved(), 0u);
}

TEST(skip_blanks_and_comments, passes_spaces_and_tabs) {
    EXPECT_EQ(distance(skip_blanks_and_comments, " \t x"), 3u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "x"), 0u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "  "), 2u);
    EXPECT_EQ(distance(skip_blanks_and_comments, ""), 0u);
}

TEST(skip_blanks_and_comments, stops_on_a_newline) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "  \n x"), 2u);
}

TEST(skip_blanks_and_comments, stops_on_a_carriage_return_and_a_form_feed) {
    EXPECT_EQ(distance(skip_blanks_and_comments, " \r\n"), 1u);
    EXPECT_EQ(distance(skip_blanks_and_comments, " \f"), 1u);
    EXPECT_EQ(distance(skip_blanks_and_comments, " \v"), 1u);
}

TEST(skip_blanks_and_comments, passes_a_comment_but_not_its_newline) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "# note\nx"), 6u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "  # note # more"), 15u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "#\nx"), 1u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "#"), 1u);
}

TEST(skip_blanks_and_comments, finds_no_continuation_in_a_comment) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "# a \\\nx"), 5u);
}

TEST(skip_blanks_and_comments, passes_a_backslash_with_the_rest_of_its_line) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\\nx"), 2u);
    EXPECT_EQ(distance(skip_blanks_and_comments, " \\ ignored # text ; 5\n  x"), 24u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\a\n\\b\n\\c\nx"), 9u);
}

TEST(skip_blanks_and_comments, continues_after_a_continuation_as_before_it) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\\n # note\nx"), 9u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\\n\nx"), 2u);
}

TEST(skip_blanks_and_comments, ends_a_backslash_without_a_newline_at_the_end_mark) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\"), 1u);
    EXPECT_EQ(distance(skip_blanks_and_comments, " \\ text"), 7u);
}

TEST(skip_blanks_and_comments, stops_at_the_stop_pointer) {
    EXPECT_EQ(distance(skip_blanks_and_comments, "    x", 2), 2u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "    x", 0), 0u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "# note\n", 3), 3u);
    EXPECT_EQ(distance(skip_blanks_and_comments, " \\ text\nx", 4), 4u);
    EXPECT_EQ(distance(skip_blanks_and_comments, "\\\n  x", 3), 3u);
}

TEST(skip_blanks, stops_on_a_comment) {
    EXPECT_EQ(distance(skip_blanks, "  # note\n"), 2u);
}

TEST(skip_blanks, passes_blanks_and_continuations_as_the_other_does) {
    EXPECT_EQ(distance(skip_blanks, " \t x"), 3u);
    EXPECT_EQ(distance(skip_blanks, " \\ ignored\n x"), 12u);
    EXPECT_EQ(distance(skip_blanks, "\\\n # note"), 3u);
    EXPECT_EQ(distance(skip_blanks, " \n"), 1u);
    EXPECT_EQ(distance(skip_blanks, " \\ text"), 7u);
    EXPECT_EQ(distance(skip_blanks, "    x", 2), 2u);
}

TEST(skip_to_line_end, goes_to_the_newline_or_the_end_of_the_text) {
    EXPECT_EQ(distance(skip_to_line_end, "x = 3; m\ny"), 8u);
    EXPECT_EQ(distance(skip_to_line_end, "x = 3"), 5u);
    EXPECT_EQ(distance(skip_to_line_end, "\nx"), 0u);
    EXPECT_EQ(distance(skip_to_line_end, ""), 0u);
}

TEST(skip_to_line_end, passes_a_comment) {
    EXPECT_EQ(distance(skip_to_line_end, "x # a ; b\ny"), 9u);
}

TEST(skip_to_line_end, follows_a_continuation_outside_a_comment) {
    EXPECT_EQ(distance(skip_to_line_end, "x \\ y\n z\nw"), 8u);
    EXPECT_EQ(distance(skip_to_line_end, "x # \\\n z"), 5u);
}

TEST(skip_to_line_end, stops_at_the_stop_pointer) {
    EXPECT_EQ(distance(skip_to_line_end, "x = 3 + y\n", 5), 5u);
}

TEST(skip_to_statement_end, stops_at_a_semicolon_a_hash_and_a_newline) {
    EXPECT_EQ(distance(skip_to_statement_end, "x = 3; m"), 5u);
    EXPECT_EQ(distance(skip_to_statement_end, "x = 3 # m"), 6u);
    EXPECT_EQ(distance(skip_to_statement_end, "x = 3 \n"), 6u);
    EXPECT_EQ(distance(skip_to_statement_end, "x = 3"), 5u);
}

TEST(skip_to_statement_end, follows_a_continuation) {
    EXPECT_EQ(distance(skip_to_statement_end, "x \\ a;b\n y;"), 10u);
}

TEST(skip_to_statement_end, passes_a_comment_it_begins_in_front_of_up_to_its_newline) {
    EXPECT_EQ(distance(skip_to_statement_end, " # note; a\nx"), 10u);
}

TEST(skip_to_statement_end, stops_at_the_stop_pointer) {
    EXPECT_EQ(distance(skip_to_statement_end, "x    ;", 3), 3u);
}

TEST(move_to_comment_or_line_end, lands_on_the_first_hash) {
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x = 1 # a # b\n"), 6u);
    EXPECT_EQ(distance(move_to_comment_or_line_end, "# a"), 0u);
}

TEST(move_to_comment_or_line_end, lands_on_the_line_end_without_a_hash) {
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x = 1 \ny # b"), 6u);
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x"), 1u);
    EXPECT_EQ(distance(move_to_comment_or_line_end, ""), 0u);
}

TEST(move_to_comment_or_line_end, finds_a_hash_after_a_backslash_too) {
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x \\ # a\n y"), 4u);
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x \\\n y # a\n"), 7u);
}

TEST(move_to_comment_or_line_end, stops_at_the_stop_pointer) {
    EXPECT_EQ(distance(move_to_comment_or_line_end, "x  # a", 2), 2u);
}

// Tests of a line.

TEST(rest_of_line_is_blank, holds_up_to_the_line_end) {
    for (const char* text : {"", "   ", " \t", "\nx", "  \nx"})
        EXPECT_TRUE(rest_of_line_is_blank(cursor(text))) << text;
}

TEST(rest_of_line_is_blank, fails_on_anything_else_a_comment_included) {
    for (const char* text : {"x", "  x", " # a", " ;", "\r", " \\\n"})
        EXPECT_FALSE(rest_of_line_is_blank(cursor(text))) << text;
}

TEST(rest_of_line_is_blank, stops_at_the_stop_pointer) {
    const at a("  x", 2);
    EXPECT_TRUE(rest_of_line_is_blank(a.p));
}

TEST(rest_is_blank_before_comment, ignores_a_comment) {
    for (const char* text : {"", "   ", "\nx", "# a", "  # a\nx"})
        EXPECT_TRUE(rest_is_blank_before_comment(cursor(text))) << text;
    for (const char* text : {"x", "  x # a", ";", "\r", " \\\n"})
        EXPECT_FALSE(rest_is_blank_before_comment(cursor(text))) << text;
}

TEST(span_begins_with_comment, tests_the_first_character_that_is_neither_newline_nor_blank) {
    const auto begins = [](const char* text, std::size_t from, std::size_t to) {
        return span_begins_with_comment(cursor(text + from), cursor(text + to));
    };
    EXPECT_TRUE(begins("# a", 0, 3));
    EXPECT_TRUE(begins(" \t\n # a", 0, 7));
    EXPECT_FALSE(begins("x # a", 0, 5));
    EXPECT_FALSE(begins("   ", 0, 3));
}

TEST(span_begins_with_comment, finds_no_hash_at_its_end_or_in_an_empty_span) {
    const char* text = "  # a";
    EXPECT_FALSE(span_begins_with_comment(cursor(text), cursor(text + 2)));
    EXPECT_TRUE(span_begins_with_comment(cursor(text), cursor(text + 3)));
    EXPECT_FALSE(span_begins_with_comment(cursor(text + 2), cursor(text + 2)));
}

TEST(absorb_next_comment_line, goes_to_the_end_of_a_comment_on_the_next_line) {
    const std::string text = "# a\n  # b\nx";
    at a(text);
    skip_blanks_and_comments(a.p);
    ASSERT_EQ(a.moved(), 3u);
    EXPECT_TRUE(absorb_next_comment_line(a.p));
    EXPECT_EQ(a.moved(), 9u);
    EXPECT_FALSE(absorb_next_comment_line(a.p));
    EXPECT_EQ(a.moved(), 9u);
}

TEST(absorb_next_comment_line, stops_at_a_blank_line) {
    at a("# a\n\n# b");
    skip_blanks_and_comments(a.p);
    EXPECT_FALSE(absorb_next_comment_line(a.p));
    EXPECT_EQ(a.moved(), 3u);
}

TEST(absorb_next_comment_line, stops_at_a_line_with_a_comment_after_a_statement) {
    at a("# a\nx # b");
    skip_blanks_and_comments(a.p);
    EXPECT_FALSE(absorb_next_comment_line(a.p));
    EXPECT_EQ(a.moved(), 3u);
}

TEST(absorb_next_comment_line, is_false_at_the_end_of_the_text) {
    at a("# a");
    skip_blanks_and_comments(a.p);
    EXPECT_FALSE(absorb_next_comment_line(a.p));
    EXPECT_EQ(a.moved(), 3u);
    at stopped("# a\n# b", 3);
    skip_blanks_and_comments(stopped.p);
    EXPECT_FALSE(absorb_next_comment_line(stopped.p));
    EXPECT_EQ(stopped.moved(), 3u);
}

// Scanners.

TEST(is_mnemonic, accepts_a_letter_followed_by_name_characters) {
    at a("x_1a2+y");
    EXPECT_TRUE(is_mnemonic(false, a.p));
    EXPECT_EQ(a.moved(), 0u);
    EXPECT_TRUE(is_mnemonic(true, a.p));
    EXPECT_EQ(a.moved(), 5u);
}

TEST(is_mnemonic, ends_at_a_byte_above_127) {
    at a("ab\xc3\xa4");
    EXPECT_TRUE(is_mnemonic(true, a.p));
    EXPECT_EQ(a.moved(), 2u);
}

TEST(is_mnemonic, does_not_begin_with_an_underscore_a_digit_or_a_blank) {
    for (const char* text : {"_x", "2x", " x", "", "+x", "\xc3\xa4", "#x"}) {
        at a(text);
        EXPECT_FALSE(is_mnemonic(true, a.p)) << text;
        EXPECT_EQ(a.moved(), 0u);
    }
}

TEST(is_mnemonic, has_no_limit_of_length) {
    at a(std::string(100000, 'n') + "=");
    EXPECT_TRUE(is_mnemonic(true, a.p));
    EXPECT_EQ(a.moved(), 100000u);
}

TEST(is_mnemonic, stops_at_the_stop_pointer) {
    at a("name", 2);
    EXPECT_TRUE(is_mnemonic(true, a.p));
    EXPECT_EQ(a.moved(), 2u);
    at stopped("name", 0);
    EXPECT_FALSE(is_mnemonic(true, stopped.p));
}

TEST(take_name, returns_the_name_and_moves_after_it) {
    at a("foo_2 bar");
    EXPECT_EQ(take_name(a.p), "foo_2");
    EXPECT_EQ(a.moved(), 5u);
}

TEST(scan_number, moves_after_the_number_if_advance_is_set) {
    at a("3.5e1 ft");
    double x = 0.0;
    EXPECT_TRUE(scan_number(false, a.p, x));
    EXPECT_EQ(x, 35.0);
    EXPECT_EQ(a.moved(), 0u);
    EXPECT_TRUE(scan_number(true, a.p, x));
    EXPECT_EQ(x, 35.0);
    EXPECT_EQ(a.moved(), 5u);
}

TEST(scan_number, skips_only_blanks_and_tabs_before_a_number) {
    double x = 0.0;
    at a(" \t -2");
    EXPECT_TRUE(scan_number(true, a.p, x));
    EXPECT_EQ(x, -2.0);
    EXPECT_EQ(a.moved(), 5u);
    at newline(" \n2");
    EXPECT_FALSE(scan_number(true, newline.p, x));
    EXPECT_EQ(newline.moved(), 0u);
}

TEST(scan_number, gives_zero_and_stays_where_there_is_none) {
    for (const char* text : {"x", "", "  ", "- 2", "inf", "nan", ".", "  x"}) {
        at a(text);
        double x = 7.0;
        EXPECT_FALSE(scan_number(true, a.p, x)) << text;
        EXPECT_EQ(x, 0.0) << text;
        EXPECT_EQ(a.moved(), 0u) << text;
    }
}

TEST(scan_number, finds_none_at_the_stop_pointer) {
    at a("  5", 2);
    double x = 7.0;
    EXPECT_FALSE(scan_number(true, a.p, x));
    EXPECT_EQ(x, 0.0);
}

TEST(scan_component_suffix, accepts_an_index_from_1_to_3) {
    for (int component = 1; component <= 3; ++component) {
        at a("[" + std::to_string(component) + "]=");
        int out = 0;
        EXPECT_TRUE(scan_component_suffix(a.p, out));
        EXPECT_EQ(out, component);
        EXPECT_EQ(a.moved(), 3u);
    }
}

TEST(scan_component_suffix, passes_blanks_around_its_tokens) {
    for (const std::string text : {"[3 ]", "[ 3]", "  [3]", "\t[ 3 ]", "[\\ more\n3]"}) {
        at a(text + "=");
        int out = 0;
        EXPECT_TRUE(scan_component_suffix(a.p, out)) << text;
        EXPECT_EQ(out, 3);
        EXPECT_EQ(a.moved(), text.size());
    }
}

TEST(scan_component_suffix, is_no_suffix_with_anything_else) {
    for (const char* text : {"[4]", "[0]", "[33]", "[x]", "[]", "[1", "[1;]", "[-1]", "[1.0]", "(1)", "1]",
                             "", "[1 # c\n]", "[\n1]"}) {
        at a(text);
        int out = 0;
        EXPECT_FALSE(scan_component_suffix(a.p, out)) << text;
        EXPECT_EQ(out, 0) << text;
        EXPECT_EQ(a.moved(), 0u) << text;
    }
}

// Keywords.

TEST(match_keyword, matches_a_whole_word) {
    for (const char* text : {"MKS", "MKS;", "MKS ", "MKS\n", "MKS(N)", "MKS-", "MKS\xc3\xa4"}) {
        at a(text);
        EXPECT_EQ(match_keyword(true, true, a.p, "MKS"), 0) << text;
        EXPECT_EQ(a.moved(), 3u) << text;
    }
}

TEST(match_keyword, does_not_move_unless_advance_is_set) {
    at a("MKS;");
    EXPECT_EQ(match_keyword(false, true, a.p, "MKS"), 0);
    EXPECT_EQ(a.moved(), 0u);
}

TEST(match_keyword, gives_the_name_character_that_follows_the_keyword) {
    for (const char c : {'x', 'Q', '7', '_'}) {
        at a(std::string("MKS") + c);
        EXPECT_EQ(match_keyword(true, true, a.p, "MKS"), c);
        EXPECT_EQ(a.moved(), 0u);
    }
}

TEST(match_keyword, gives_the_difference_at_the_first_mismatch) {
    at a("abc");
    EXPECT_EQ(match_keyword(true, true, a.p, "abd"), -1);
    EXPECT_EQ(match_keyword(true, true, a.p, "aac"), 1);
    EXPECT_EQ(match_keyword(true, true, a.p, "xbc"), 'a' - 'x');
    EXPECT_EQ(a.moved(), 0u);
}

TEST(match_keyword, is_positive_for_a_shorter_keyword_and_negative_for_a_longer_one) {
    at a("abc");
    EXPECT_GT(match_keyword(true, true, a.p, "ab"), 0);
    EXPECT_LT(match_keyword(true, true, a.p, "abd"), 0);
    EXPECT_EQ(match_keyword(true, true, a.p, "abcd"), -'d');
    EXPECT_EQ(a.moved(), 0u);
}

TEST(match_keyword, is_case_sensitive_on_request) {
    at a("mKs;");
    EXPECT_EQ(match_keyword(true, true, a.p, "MKS"), 'm' - 'M');
    EXPECT_EQ(a.moved(), 0u);
    EXPECT_EQ(match_keyword(true, false, a.p, "MkS"), 0);
    EXPECT_EQ(a.moved(), 3u);
}

TEST(match_keyword, folds_both_characters_before_subtracting) {
    at a("ABC");
    EXPECT_EQ(match_keyword(true, false, a.p, "abD"), -1);
    EXPECT_EQ(match_keyword(true, false, a.p, "ab_"), 'c' - '_');
}

TEST(match_keyword, compares_signed_bytes) {
    at a("\xe4");
    EXPECT_EQ(match_keyword(true, true, a.p, "a"), static_cast<signed char>(0xe4) - 'a');
    EXPECT_LT(match_keyword(true, true, a.p, "a"), 0);
}

TEST(match_keyword, treats_the_stop_pointer_as_the_end_of_the_text) {
    at a("MKSx", 3);
    EXPECT_EQ(match_keyword(true, true, a.p, "MKS"), 0);
    EXPECT_EQ(a.moved(), 3u);
    at shorter("MKS", 2);
    EXPECT_EQ(match_keyword(true, true, shorter.p, "MKS"), -'S');
    EXPECT_EQ(shorter.moved(), 0u);
}

TEST(match_keyword, may_hold_characters_that_no_name_has) {
    at a("#  START TYPING BELOW: now");
    EXPECT_EQ(match_keyword(true, true, a.p, "#  START TYPING BELOW:"), 0);
    EXPECT_EQ(a.moved(), 22u);
}

TEST(match_keyword_nocase, folds_and_advances) {
    at a("SiN(0)");
    EXPECT_EQ(match_keyword_nocase(a.p, "sin"), 0);
    EXPECT_EQ(a.moved(), 3u);
    EXPECT_NE(match_keyword_nocase(a.p, "sin"), 0);
    EXPECT_EQ(a.moved(), 3u);
}

TEST(text_compare_nocase, compares_whole_texts) {
    EXPECT_EQ(text_compare_nocase("PrintFunc", "printfunc"), 0);
    EXPECT_EQ(text_compare_nocase("", ""), 0);
    EXPECT_EQ(text_compare_nocase("abc", "ABD"), -1);
    EXPECT_EQ(text_compare_nocase("b", "A"), 1);
    EXPECT_GT(text_compare_nocase("ends", "end"), 0);
    EXPECT_LT(text_compare_nocase("end", "ends"), 0);
    EXPECT_EQ(text_compare_nocase("\xc4", "\xe4"), '\xc4' - '\xe4');
}

TEST(text_compare_nocase, reads_nothing_after_the_texts) {
    constexpr std::string_view longer = "abcX";
    constexpr std::string_view other = "abdY";
    EXPECT_EQ(text_compare_nocase(longer.substr(0, 2), other.substr(0, 2)), 0);
    EXPECT_EQ(text_compare_nocase(longer.substr(0, 3), other.substr(0, 2)), 'c');
    EXPECT_EQ(text_compare_nocase(longer.substr(0, 2), other.substr(0, 3)), -'d');
}

TEST(count_char_in_text, counts_a_character) {
    EXPECT_EQ(count_char_in_text("a,b,,c", ','), 3u);
    EXPECT_EQ(count_char_in_text("abc", ','), 0u);
    EXPECT_EQ(count_char_in_text("", ','), 0u);
}

TEST(text_span, is_the_text_between_two_cursors) {
    at a("name = 3");
    const cursor start = a.p;
    is_mnemonic(true, a.p);
    EXPECT_EQ(text_span(start, a.p), "name");
    EXPECT_EQ(text_span(start, start), "");
}

} // namespace
