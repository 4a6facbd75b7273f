#include "xllrt/text/text_number.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace {

using namespace metrify;

// Reads the text in both widths, which must agree.
template <class Value, class Parse>
std::optional<Value> Read(const std::string& text, Parse parse) {
    Value narrow{};
    Value wide{};
    const bool success = parse(text, narrow);
    EXPECT_EQ(parse(std::u16string(text.begin(), text.end()), wide), success) << text;
    if (!success)
        return std::nullopt;
    EXPECT_TRUE(narrow == wide || (narrow != narrow && wide != wide)) << text;
    return narrow;
}

std::optional<double> Number(const std::string& text) {
    return Read<double>(
        text, [](const auto& any, double& value) { return ParseNumber(any, value); });
}

std::optional<std::int32_t> Integer(const std::string& text) {
    return Read<std::int32_t>(
        text, [](const auto& any, std::int32_t& value) { return ParseInteger(any, value); });
}

TEST(TextNumber, a_plus_sign_before_a_number_is_read) {
    EXPECT_EQ(Number("+2.5"), 2.5);
    EXPECT_EQ(Number(" +.5"), 0.5);
    EXPECT_EQ(Number("2e+3"), 2000.0);
    EXPECT_EQ(Number("+inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Number("+0x10"), 16.0);
    EXPECT_EQ(Integer("+17"), 17);
}

TEST(TextNumber, a_second_sign_is_not_part_of_a_number) {
    for (const char* text : {"--5", "+-5", "-+5", "++5", "- 5", "+ 5", "--inf", "+-nan", "--0x5"})
        EXPECT_FALSE(Number(text).has_value()) << text;
    for (const char* text : {"--5", "+-5", "-+5", "++5", "- 5"})
        EXPECT_FALSE(Integer(text).has_value()) << text;
}

TEST(TextNumber, a_sign_alone_is_not_a_number) {
    for (const char* text : {"+", "-", " - ", "+e5", "-."}) {
        EXPECT_FALSE(Number(text).has_value()) << text;
        EXPECT_FALSE(Integer(text).has_value()) << text;
    }
}

TEST(TextNumber, a_minus_makes_negative_zeros_and_nans_too) {
    EXPECT_TRUE(std::signbit(Number("-0").value()));
    EXPECT_FALSE(std::signbit(Number("0").value()));
    EXPECT_TRUE(std::signbit(Number("-nan").value()));
    EXPECT_EQ(Number("-inf"), -std::numeric_limits<double>::infinity());
}

TEST(TextNumber, hexadecimal_numbers_have_a_prefix_in_either_case) {
    EXPECT_EQ(Number("0x1F"), 31.0);
    EXPECT_EQ(Number("0X1f"), 31.0);
    EXPECT_EQ(Number("-0x10"), -16.0);
    EXPECT_EQ(Number("0x.8"), 0.5);
    EXPECT_EQ(Number("0xa.8p-1"), 5.25);
    EXPECT_EQ(Number("0x1P+4"), 16.0);
    EXPECT_EQ(Number("0x1e5"), 485.0) << "e is a digit there";
}

TEST(TextNumber, only_digits_follow_the_hexadecimal_prefix) {
    for (const char* text : {"0x-5", "-0x-5", "0x+5", "0xinf", "0xnan", "0xinfinity", "0X-1", "0x", "0x.",
                             "0x 5", "0xg", "0x0x5", "0x.p1", "0x.inf", "0x.-5", "0x1p+-5", "0x1p-+5"})
        EXPECT_FALSE(Number(text).has_value()) << text;
}

TEST(TextNumber, integers_are_decimal_only) {
    EXPECT_EQ(Integer("0012"), 12);
    for (const char* text : {"0x10", "1e3", "1.0", "inf", "1,000"})
        EXPECT_FALSE(Integer(text).has_value()) << text;
}

TEST(TextNumber, integers_end_at_the_bounds_of_32_bits) {
    EXPECT_EQ(Integer("2147483647"), 2147483647);
    EXPECT_EQ(Integer("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_FALSE(Integer("2147483648").has_value());
    EXPECT_FALSE(Integer("-2147483649").has_value());
    EXPECT_FALSE(Integer("99999999999999999999").has_value());
}

TEST(TextNumber, infinities_and_nans_are_words_in_any_case) {
    EXPECT_EQ(Number("Inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Number("iNfInItY"), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(Number("NaN").value()));
    EXPECT_TRUE(std::isnan(Number("nan(1_a)").value()));
    EXPECT_FALSE(Number("infinit").has_value());
    EXPECT_FALSE(Number("nan(").has_value());
}

TEST(TextNumber, numbers_outside_the_range_of_a_double_fail) {
    EXPECT_EQ(Number("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_FALSE(Number("1.8e308").has_value());
    EXPECT_FALSE(Number("-0x1p1024").has_value());
    EXPECT_EQ(Number("5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_FALSE(Number("2e-324").has_value());
    EXPECT_EQ(Number("0e-999"), 0.0);
}

TEST(TextNumber, white_space_of_six_kinds_may_surround_a_number) {
    EXPECT_EQ(Number(" \t\n\v\f\r1 \t\n\v\f\r"), 1.0);
    EXPECT_EQ(Integer(" \t\n\v\f\r1 \t\n\v\f\r"), 1);
    EXPECT_EQ(Number(" \t\n\v\f\r"), 0.0);
    EXPECT_FALSE(Number("").has_value());
    EXPECT_FALSE(Number("1 2").has_value());
}

TEST(TextNumber, a_failure_leaves_the_value_unchanged) {
    double number = 2.5;
    EXPECT_FALSE(ParseNumber(std::string_view("12x"), number));
    EXPECT_EQ(number, 2.5);
    std::int32_t integer = 7;
    EXPECT_FALSE(ParseInteger(std::u16string_view(u"2147483648"), integer));
    EXPECT_EQ(integer, 7);
}

TEST(TextNumber, digits_outside_ascii_are_not_digits) {
    double number = 0.0;
    EXPECT_FALSE(ParseNumber(std::u16string_view(u"\uFF11"), number)) << "a full-width one";
    EXPECT_FALSE(ParseNumber(std::u16string_view(u"\u0131nf"), number));
    EXPECT_FALSE(ParseNumber(std::u16string_view(u"1\u0135"), number)) << "low byte '5'";
}

} // namespace
