#include "xllrt/text/string_formatter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using psl::Placeholder;

std::string Formatted(const char* format, auto... arguments) {
    std::string text;
    psl::Format(text, format, arguments...);
    return text;
}

std::u16string WideFormatted(const char16_t* format, auto... arguments) {
    std::u16string text;
    psl::Format(text, format, arguments...);
    return text;
}

int ParseCode(std::string_view format) {
    std::vector<Placeholder> placeholders;
    std::string cleaned;
    return psl::ParseFormat<char>(format, placeholders, cleaned);
}

TEST(Formatter, doubled_braces_become_single_ones) {
    EXPECT_EQ(Formatted("{{0}}", "unused"), "{0}");
    EXPECT_EQ(WideFormatted(u"{{0}}", u"unused"), u"{0}");
    EXPECT_EQ(Formatted("{{{0}}}", "a"), "{a}");
    EXPECT_EQ(Formatted("}}{{"), "}{");
}

TEST(Formatter, indices_come_in_any_order_and_several_times) {
    EXPECT_EQ(Formatted("{1}{0}{1}", "a", "b"), "bab");
    EXPECT_EQ(WideFormatted(u"{1}{0}{1}", u"a", u"b"), u"bab");
    EXPECT_EQ(Formatted("x{0}y{0}z", "--"), "x--y--z");
}

TEST(Formatter, a_template_without_placeholders_reads_no_argument) {
    EXPECT_EQ(Formatted("plain"), "plain");
    EXPECT_EQ(Formatted(""), "");
    EXPECT_EQ(WideFormatted(u"plain"), u"plain");
}

TEST(Formatter, a_null_argument_is_the_empty_text) {
    EXPECT_EQ(Formatted("Expected {1} for {0}", static_cast<const char*>(nullptr), "b"), "Expected b for ");
    EXPECT_EQ(WideFormatted(u"[{0}]", static_cast<const char16_t*>(nullptr)), u"[]");
}

TEST(Formatter, a_missing_argument_is_the_empty_text) {
    EXPECT_EQ(Formatted("{0}{1}{65535}|", "a"), "a|");
}

TEST(Formatter, braces_of_an_argument_are_not_interpreted) {
    EXPECT_EQ(Formatted("{0}{1}", "{1}", "{{"), "{1}{{");
}

TEST(Formatter, an_index_may_have_leading_zeros) {
    EXPECT_EQ(Formatted("{0001}", "a", "b"), "b");
}

TEST(Formatter, strings_and_views_are_arguments_too) {
    EXPECT_EQ(Formatted("{0}{1}{2}", std::string("a"), std::string_view("b"), "c"), "abc");
}

TEST(Formatter, the_old_text_may_be_an_argument) {
    std::string text = "old";
    psl::Format(text, "<{0}{0}>", text);
    EXPECT_EQ(text, "<oldold>");
}

TEST(Formatter, unmatched_braces_give_code_minus_2) {
    for (const char* format : {"{", "{0", "{0{", "}", "a}b", "{0}}", "{{0}", "{0{1}}", "{ab"})
        EXPECT_EQ(ParseCode(format), -2) << format;
}

TEST(Formatter, an_index_that_is_not_a_number_gives_code_minus_3) {
    for (const char* format : {"{}", "{a}", "{ 0}", "{0 }", "{-1}", "{99999999a}"})
        EXPECT_EQ(ParseCode(format), -3) << format;
}

TEST(Formatter, an_index_above_65535_gives_code_minus_4) {
    EXPECT_EQ(ParseCode("{65535}"), 0);
    EXPECT_EQ(ParseCode("{65536}"), -4);
    EXPECT_EQ(ParseCode("{99999999999999999999}"), -4);
}

TEST(Formatter, a_null_template_gives_code_minus_6) {
    std::string text = "kept";
    EXPECT_EQ(psl::FormatList<char>(text, nullptr, {}), -6);
    EXPECT_EQ(text, "kept");
    std::u16string wide;
    EXPECT_EQ(psl::FormatList<char16_t>(wide, nullptr, {}), -6);
}

TEST(Formatter, a_list_gives_the_length_plus_one_or_the_code_of_the_parse) {
    const std::vector<psl::TextArgument<char>> arguments{"ab", "cde"};
    std::string text;
    EXPECT_EQ(psl::FormatList<char>(text, "{1}-{0}", arguments), 7);
    EXPECT_EQ(text, "cde-ab");
    EXPECT_EQ(psl::FormatList<char>(text, "", arguments), 1);
    EXPECT_EQ(text, "");
    EXPECT_EQ(psl::FormatList<char>(text, "{", arguments), -2);
    EXPECT_EQ(psl::FormatList<char>(text, "{}", arguments), -3);
    EXPECT_EQ(psl::FormatList<char>(text, "{65536}", arguments), -4);
}

TEST(Formatter, placeholders_are_listed_with_their_positions_in_the_cleaned_template) {
    std::vector<Placeholder> placeholders{{9, 9, 9}};
    std::string cleaned = "old";
    ASSERT_EQ(psl::ParseFormat<char>("a{{{12}}}b{0}", placeholders, cleaned), 0);
    EXPECT_EQ(cleaned, "a{{12}}b{0}");
    ASSERT_EQ(placeholders.size(), 2U);
    EXPECT_EQ(placeholders[0].position, 2U);
    EXPECT_EQ(placeholders[0].length, 4U);
    EXPECT_EQ(placeholders[0].index, 12);
    EXPECT_EQ(placeholders[1].position, 8U);
    EXPECT_EQ(placeholders[1].length, 3U);
    EXPECT_EQ(placeholders[1].index, 0);
}

TEST(Formatter, a_failure_throws_a_fixed_text_and_empties_the_result) {
    for (const char* format :
         {"{", "{0", "{0{", "}", "{}", "{a}", "{ 0}", "{65536}", static_cast<const char*>(nullptr)}) {
        std::string text = "old";
        try {
            psl::Format(text, format, "a");
            ADD_FAILURE() << "nothing thrown for " << (format ? format : "null");
        } catch (const psl::StringFormatterError& error) {
            EXPECT_STREQ(error.what(), "Error in string format");
        }
        EXPECT_EQ(text, "");
    }
    std::u16string wide;
    EXPECT_THROW(psl::Format(wide, u"{a}", u"a"), psl::StringFormatterError);
}

TEST(Formatter, its_error_is_a_runtime_error) {
    static_assert(std::is_base_of_v<std::runtime_error, psl::StringFormatterError>);
    static_assert(sizeof(psl::StringFormatterError) == sizeof(std::runtime_error));
}

TEST(Formatter, wide_text_keeps_units_beyond_a_byte) {
    EXPECT_EQ(WideFormatted(u"\u4e16{0}", u"\u00b5\xd83d\xde00"), u"\u4e16\u00b5\xd83d\xde00");
}

} // namespace
