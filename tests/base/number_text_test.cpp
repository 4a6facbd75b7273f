#include "base/number_text.h"
#include "base/short_decimals.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace metrify;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string formatted(double x) {
    number_buffer buffer;
    return std::string(format_double(x, buffer));
}

std::string printed(double x) {
    char text[64];
    const int length = std::snprintf(text, sizeof text, "%g", x);
    return {text, static_cast<std::size_t>(length)};
}

std::uint64_t bits_of(double x) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

double double_of(std::uint64_t bits) {
    double x = 0.0;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

/// The number that was read and its length in the text.
struct reading {
    double value;
    std::size_t length;
};

reading read(const std::string& text) {
    double value = 123.0;
    const char* end = read_double(text.c_str(), value);
    return {value, static_cast<std::size_t>(end - text.c_str())};
}

// What strtod reads, which must not be one of the forms that are not accepted here.
reading read_by_strtod(const std::string& text) {
    char* end = nullptr;
    const double value =
        std::strtod(text.c_str(), &end); // NOLINT(cert-err34-c): this is what is compared with
    const auto length = static_cast<std::size_t>(end - text.c_str());
    // If no number is read, some runtimes return a zero with the sign of the text.
    return {length == 0 ? 0.0 : value, length};
}

void expect_read_as_strtod(const std::string& text) {
    const reading ours = read(text);
    const reading theirs = read_by_strtod(text);
    EXPECT_EQ(bits_of(ours.value), bits_of(theirs.value)) << text;
    EXPECT_EQ(ours.length, theirs.length) << text;
}

void expect_no_number(const std::string& text) {
    const reading ours = read(text);
    EXPECT_EQ(ours.length, 0u) << text;
    EXPECT_EQ(bits_of(ours.value), bits_of(0.0)) << text;
}

TEST(format_double, writes_six_significant_digits) {
    EXPECT_EQ(formatted(1.0 / 3.0), "0.333333");
    EXPECT_EQ(formatted(2.0 / 3.0), "0.666667");
    EXPECT_EQ(formatted(1234567.8), "1.23457e+06");
    EXPECT_EQ(formatted(123456.4), "123456");
    EXPECT_EQ(formatted(1.0668), "1.0668");
}

TEST(format_double, leaves_trailing_zeros_out) {
    EXPECT_EQ(formatted(3.0), "3");
    EXPECT_EQ(formatted(2.50), "2.5");
    EXPECT_EQ(formatted(100000.0), "100000");
    EXPECT_EQ(formatted(1e6), "1e+06");
    EXPECT_EQ(formatted(1.5e10), "1.5e+10");
}

TEST(format_double, has_two_digits_of_exponent_at_least) {
    EXPECT_EQ(formatted(1e-5), "1e-05");
    EXPECT_EQ(formatted(0.0001), "0.0001");
    EXPECT_EQ(formatted(1e100), "1e+100");
    EXPECT_EQ(formatted(1e-100), "1e-100");
    EXPECT_EQ(formatted(std::numeric_limits<double>::denorm_min()), "4.94066e-324");
    EXPECT_EQ(formatted(std::numeric_limits<double>::max()), "1.79769e+308");
}

TEST(format_double, changes_to_an_exponent_by_the_rounded_value) {
    EXPECT_EQ(formatted(999999.4), "999999");
    EXPECT_EQ(formatted(999999.5), "1e+06");
    EXPECT_EQ(formatted(0.0000999999), "9.99999e-05");
    EXPECT_EQ(formatted(0.00009999999), "0.0001");
}

TEST(format_double, keeps_the_sign_of_zero) {
    EXPECT_EQ(formatted(0.0), "0");
    EXPECT_EQ(formatted(-0.0), "-0");
}

TEST(format_double, writes_infinities) {
    EXPECT_EQ(formatted(infinity), "inf");
    EXPECT_EQ(formatted(-infinity), "-inf");
}

TEST(format_double, writes_a_not_a_number_without_a_sign) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(formatted(nan), "nan");
    EXPECT_EQ(formatted(std::copysign(nan, -1.0)), "nan");
}

TEST(format_double, agrees_with_printf_on_random_bit_patterns) {
    std::mt19937_64 random(20240131);
    for (int i = 0; i < 100000; ++i) {
        const double x = double_of(random());
        if (std::isnan(x))
            continue;
        ASSERT_EQ(formatted(x), printed(x));
    }
}

TEST(format_double, agrees_with_printf_on_numbers_of_usual_size) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-8, 8);
    for (int i = 0; i < 100000; ++i) {
        const double x = mantissa(random) * std::pow(10.0, exponent(random));
        ASSERT_EQ(formatted(x), printed(x));
    }
}

TEST(format_double, agrees_with_printf_where_the_seventh_digit_is_a_five) {
    for (int i = 0; i < 20000; ++i) {
        const double x = 100000.0 + i + 0.5;
        ASSERT_EQ(formatted(x), printed(x));
        ASSERT_EQ(formatted(x / 1024.0), printed(x / 1024.0));
        ASSERT_EQ(formatted(x * 1e-11), printed(x * 1e-11));
    }
}

// The rounding is decided by the scaled number, which has an error of its own.
TEST(format_double, agrees_with_printf_next_to_the_middle_of_two_results) {
    std::mt19937_64 random(12);
    std::uniform_int_distribution<int> digits(100000, 999999);
    for (int power = -25; power <= 25; ++power)
        for (int i = 0; i < 500; ++i) {
            const std::string text = std::to_string(digits(random)) + ".5e" + std::to_string(power);
            const double middle = std::strtod(text.c_str(), nullptr); // NOLINT(cert-err34-c): a number
            for (const double x : {middle, std::nextafter(middle, 0.0), std::nextafter(middle, infinity),
                                   -middle, middle * (1 - 1e-13), middle * (1 + 1e-13)})
                ASSERT_EQ(formatted(x), printed(x)) << text;
        }
}

TEST(format_double, agrees_with_printf_next_to_powers_of_ten) {
    for (int power = -30; power <= 30; ++power) {
        const double exact =
            std::strtod(("1e" + std::to_string(power)).c_str(), nullptr); // NOLINT(cert-err34-c)
        double below = exact;
        double above = exact;
        for (int i = 0; i < 100; ++i) {
            ASSERT_EQ(formatted(below), printed(below)) << power;
            ASSERT_EQ(formatted(above), printed(above)) << power;
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, infinity);
        }
        for (const double part : {0.9999994, 0.9999995, 0.9999996, 0.999999949, 0.99999951})
            ASSERT_EQ(formatted(exact * part), printed(exact * part)) << power;
    }
}

TEST(keep_six_digits, agrees_with_formatting_and_reading) {
    std::mt19937_64 random(31);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    int kept = 0;
    for (int power = -30; power <= 30; ++power)
        for (int i = 0; i < 2000; ++i) {
            const double x = mantissa(random) * std::pow(10.0, power);
            double result = 0.0;
            if (!short_decimals::keep_six_digits(x, result))
                continue;
            ++kept;
            double read_again = 0.0;
            read_double(formatted(x).c_str(), read_again);
            ASSERT_EQ(bits_of(result), bits_of(read_again)) << x;
        }
    EXPECT_GT(kept, 80000); // of numbers between 1e-17 and 1e26
}

TEST(keep_six_digits, leaves_what_is_out_of_range) {
    double result = 123.0;
    for (const double x : {0.0, 1e-300, 1e300, infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(short_decimals::keep_six_digits(x, result)) << x;
    EXPECT_EQ(result, 123.0);
}

TEST(format_int, writes_whole_numbers) {
    number_buffer buffer;
    EXPECT_EQ(format_int(0, buffer), "0");
    EXPECT_EQ(format_int(-12, buffer), "-12");
    EXPECT_EQ(format_int(INT_MAX, buffer), "2147483647");
    EXPECT_EQ(format_int(INT_MIN, buffer), "-2147483648");
}

TEST(read_double, accepts_digits_with_an_optional_point) {
    for (const char* text : {"0", "7", "007", "3.5", "3.", ".5", "0.", "123456789", "0.1", "00.10"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("3.").length, 2u);
    EXPECT_EQ(read(".5").value, 0.5);
}

TEST(read_double, accepts_one_sign) {
    for (const char* text : {"+5", "-5", "+.5", "-.5", "-0", "+0.0", "-5.e1"})
        expect_read_as_strtod(text);
    EXPECT_EQ(bits_of(read("-0").value), bits_of(-0.0));
    for (const char* text : {"--5", "+-5", "-+5", "- 5", "+", "-"})
        expect_no_number(text);
}

TEST(read_double, accepts_an_exponent) {
    for (const char* text : {"1e5", "1E5", "1e+5", "1e-5", "1.5e3", ".5e1", "5.e1", "1e05", "1e0005"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("1.5e3").value, 1500.0);
}

TEST(read_double, leaves_an_exponent_without_digits) {
    for (const char* text : {"1e", "1E", "1e+", "1e-", "1ex", "1e+x", "1e 5", "1.5e", "1e.5"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("1e").length, 1u);
    EXPECT_EQ(read("1e+").length, 1u);
}

TEST(read_double, ends_at_the_first_character_that_does_not_belong) {
    for (const char* text : {"3ft", "3 ft", "1.2.3", "1e5.5", "1e5e5", "12,5", "5;", "5#", "5\n", "3e5x"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("1.2.3").length, 3u);
}

TEST(read_double, finds_no_number_in_a_text_without_digits) {
    for (const char* text : {"", ".", "+.", "-.", "e5", ".e5", "+e5", "x", "ft", ";", "\n", "(1)"})
        expect_no_number(text);
}

TEST(read_double, does_not_skip_blanks) {
    for (const char* text : {" 5", "\t5", "\n5"})
        expect_no_number(text);
}

TEST(read_double, knows_no_hexadecimal_numbers) {
    EXPECT_EQ(read("0x10").length, 1u);
    EXPECT_EQ(read("0x10").value, 0.0);
    EXPECT_EQ(read("-0x1p3").length, 2u);
    EXPECT_EQ(read("0X1F").length, 1u);
}

TEST(read_double, accepts_no_words) {
    for (const char* text : {"inf", "INF", "-inf", "+inf", "infinity", "nan", "NaN", "-nan", "nan(1)"})
        expect_no_number(text);
}

TEST(read_double, gives_infinity_for_a_number_that_is_too_large) {
    for (const char* text : {"1e400", "1e309", "1.8e308", "-1e400", "123456789e301", "1e99999", "17e308"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("1e400").value, infinity);
    EXPECT_EQ(read("-1e400").value, -infinity);
    EXPECT_EQ(read("1.7976931348623157e308").value, std::numeric_limits<double>::max());
    EXPECT_EQ(read("1.7976931348623159e308").value, infinity);
}

TEST(read_double, gives_zero_for_a_number_that_is_too_small) {
    for (const char* text :
         {"1e-400", "-1e-400", "2e-324", "2.4703282292062327e-324", "0.001e-323", "1e-99999"})
        expect_read_as_strtod(text);
    EXPECT_EQ(bits_of(read("1e-400").value), bits_of(0.0));
    EXPECT_EQ(bits_of(read("-1e-400").value), bits_of(-0.0));
}

// The zeros after the point and the exponent count together.
TEST(read_double, gives_zero_for_a_number_too_small_in_spite_of_a_positive_exponent) {
    const std::string zeros(1000, '0');
    EXPECT_EQ(bits_of(read("0." + zeros + "1e500").value), bits_of(0.0));
    EXPECT_EQ(bits_of(read("0." + zeros + "1e+500").value), bits_of(0.0));
    EXPECT_EQ(read("1" + zeros + "e-500").value, infinity);
}

TEST(read_double, reads_denormals) {
    for (const char* text : {"4.9e-324", "5e-324", "3e-324", "2.4703282292062328e-324", "1e-320", "1e-310",
                             "2.2250738585072011e-308", "2.2250738585072014e-308", "-1.5e-315"})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("4.9e-324").value, std::numeric_limits<double>::denorm_min());
}

TEST(read_double, accepts_exponents_beyond_any_integer) {
    EXPECT_EQ(read("1e99999999999").value, infinity);
    EXPECT_EQ(read("1e99999999999").length, 13u);
    EXPECT_EQ(read("-1e99999999999").value, -infinity);
    EXPECT_EQ(bits_of(read("1e-99999999999").value), bits_of(0.0));
    EXPECT_EQ(read("1e-99999999999").length, 14u);
    EXPECT_EQ(read("1e99999999999999999999999999999999").value, infinity);
    EXPECT_EQ(bits_of(read("1e-99999999999999999999999999999999").value), bits_of(0.0));
    EXPECT_EQ(read("1e+99999999999999999999999999999999").value, infinity);
}

TEST(read_double, gives_zero_for_zero_with_any_exponent) {
    for (const char* text : {"0e99999999999", "0.0e400", "-0e400", "0e-99999999999",
                             "0e99999999999999999999999999999999", ".0e999999"})
        EXPECT_EQ(std::fabs(read(text).value), 0.0) << text;
    EXPECT_EQ(bits_of(read("-0e400").value), bits_of(-0.0));
}

TEST(read_double, reads_long_runs_of_digits) {
    const std::string zeros(1000, '0');
    const std::string ones(400, '1');
    for (const std::string& text :
         {std::string(300, '9'), std::string(309, '9'), ones, "0." + zeros + "1", "0." + zeros + "1e1001",
          "1" + zeros, "1" + zeros + "e-1000", "1" + zeros + "e-1400", zeros + "5", "0." + ones, "." + zeros,
          zeros + "." + zeros + "e5", "1." + zeros + "1", "0." + zeros + "1e+1400",
          "1" + zeros + "." + zeros})
        expect_read_as_strtod(text);
    EXPECT_EQ(read("0." + zeros + "1e1001").value, 1.0);
    EXPECT_EQ(read("1" + zeros + "e-1000").value, 1.0);
}

TEST(read_double, rounds_halves_to_even) {
    for (const char* text :
         {"9007199254740993", "9007199254740995", "9007199254740993.0000000000000000000001",
          "1.00000000000000011102230246251565", "1.000000000000000111022302462515655",
          "0.500000000000000166533453693773481063544750213623046875"})
        expect_read_as_strtod(text);
}

// Up to 15 digits and a power of ten up to 22 need one rounding only; more would need two.
TEST(read_double, rounds_once_at_any_number_of_digits_and_any_exponent) {
    std::mt19937_64 random(15);
    for (std::size_t digits = 1; digits <= 19; ++digits)
        for (int power = -40; power <= 40; ++power)
            for (int i = 0; i < 10; ++i) {
                std::string text = std::to_string(random()).substr(0, digits);
                text.insert(static_cast<std::size_t>(random() % (text.size() + 1)), ".");
                if (text.size() > 1)
                    expect_read_as_strtod(text + "e" + std::to_string(power));
            }
}

// Sign, digits, point and exponent in any combination, well-formed or not.
std::string random_decimal(std::mt19937& random) {
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const auto digits = [&](int most) {
        std::string text;
        for (int i = pick(0, most); i > 0; --i)
            text += static_cast<char>('0' + pick(0, 9));
        return text;
    };
    std::string text;
    if (pick(0, 3) == 0)
        text += pick(0, 1) == 0 ? '-' : '+';
    text += digits(pick(0, 5) == 0 ? 40 : 8);
    if (pick(0, 1) == 0)
        text += "." + digits(pick(0, 5) == 0 ? 40 : 8);
    if (pick(0, 1) == 0) {
        text += pick(0, 1) == 0 ? 'e' : 'E';
        if (pick(0, 1) == 0)
            text += pick(0, 1) == 0 ? '-' : '+';
        text += digits(3);
    }
    if (pick(0, 3) == 0)
        text += " ;#.m"[pick(0, 4)];
    return text;
}

TEST(read_double, agrees_with_strtod_on_random_decimal_texts) {
    std::mt19937 random(20240131);
    for (int i = 0; i < 100000 && !testing::Test::HasFailure(); ++i)
        expect_read_as_strtod(random_decimal(random));
}

TEST(read_double, reads_back_what_is_written_with_17_digits) {
    std::mt19937_64 random(99);
    for (int i = 0; i < 50000; ++i) {
        const double x = double_of(random());
        if (!std::isfinite(x))
            continue;
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", x);
        ASSERT_EQ(bits_of(read(text).value), bits_of(x)) << text;
    }
}

} // namespace
