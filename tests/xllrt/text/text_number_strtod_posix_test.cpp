// Random texts are read as the C library reads them. METRIFY_TEXTS sets their number.

#include "xllrt/text/text_number.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace {

using namespace metrify;

constexpr const char* kPieces[] = {"0",
                                   "1",
                                   "2",
                                   "3",
                                   "5",
                                   "7",
                                   "9",
                                   "a",
                                   "c",
                                   "e",
                                   "f",
                                   "A",
                                   "E",
                                   "F",
                                   "x",
                                   "X",
                                   "0x",
                                   "0X",
                                   "-",
                                   "+",
                                   ".",
                                   "e-",
                                   "e+",
                                   "p",
                                   "P",
                                   "p-",
                                   "p+",
                                   "inf",
                                   "INF",
                                   "nan",
                                   "NaN",
                                   "(",
                                   ")",
                                   "_",
                                   " ",
                                   "\t",
                                   "\n",
                                   "\v",
                                   "\f",
                                   "\r",
                                   "i",
                                   "n",
                                   "t",
                                   "y",
                                   "00000000",
                                   "99999999",
                                   "infinity",
                                   "nan(12)",
                                   "e308",
                                   "e309",
                                   "e-308",
                                   "e-310",
                                   "e-324",
                                   "p1023",
                                   "p1024",
                                   "p-1022",
                                   "p-1074",
                                   "p-1075",
                                   "\xA0",
                                   "ffffffffffffff",
                                   "9007199254740993",
                                   "1.7976931348623158",
                                   "2.4703282292062327"};

class RandomTexts {
  public:
    // Parts in any order, which are rarely numbers.
    std::string Pieces() {
        std::string text;
        for (unsigned count = 1 + Below(Below(4) == 0 ? 14 : 6); count > 0; --count)
            text += kPieces[Below(std::size(kPieces))];
        return text;
    }

    // A number, in some cases with an error.
    std::string NumberShaped() {
        const bool is_hex = Below(4) == 0;
        std::string text = OneOf({"", "", "", " ", "\t "});
        text += OneOf({"", "", "-", "+"});
        text += is_hex ? OneOf({"0x", "0X"}) : "";
        text += Digits(is_hex, 18);
        if (Below(2) == 0)
            text += "." + Digits(is_hex, 30);
        if (Below(2) == 0)
            text += OneOf(is_hex ? List{"p", "P"} : List{"e", "E"}) + OneOf({"", "-", "+"}) +
                    std::to_string(Below(is_hex ? 1100 : 330));
        text += OneOf({"", "", "", " ", "\r\n"});
        if (!text.empty() && Below(8) == 0)
            text[Below(text.size())] = kPieces[Below(std::size(kPieces))][0];
        return text;
    }

  private:
    using List = std::initializer_list<const char*>;

    unsigned Below(std::size_t bound) { return static_cast<unsigned>(engine_() % bound); }
    std::string OneOf(List list) { return list.begin()[Below(list.size())]; }
    std::string Digits(bool is_hex, unsigned longest) {
        std::string digits = Below(16) == 0 ? "" : "1";
        for (unsigned count = Below(longest); count > 0; --count)
            digits += "0123456789abcdefABCDEF"[Below(is_hex ? 22 : 10)];
        return digits;
    }

    std::mt19937_64 engine_{20260112};
};

bool OnlyWhiteSpace(const char* rest) {
    return std::string(rest).find_first_not_of(" \t\n\v\f\r") == std::string::npos;
}

// The number that the C library reads. An underflow with a result other than 0 is a number: libraries may
// report it as an error as well, but those of the host's system do not.
std::optional<double> NumberOfLibrary(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    const bool is_subnormal = value != 0.0 && std::fabs(value) <= std::numeric_limits<double>::min();
    if (text.empty() || (errno != 0 && !is_subnormal) || !OnlyWhiteSpace(end))
        return std::nullopt;
    return value;
}

std::optional<std::int32_t> IntegerOfLibrary(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || errno != 0 || !OnlyWhiteSpace(end) || value < INT32_MIN || value > INT32_MAX)
        return std::nullopt;
    return static_cast<std::int32_t>(value);
}

bool AreSame(double a, double b) {
    return std::signbit(a) == std::signbit(b) && (a == b || (std::isnan(a) && std::isnan(b)));
}

void ExpectReadAsByLibrary(const std::string& text) {
    const std::optional<double> expected = NumberOfLibrary(text);
    double number = 0.0;
    ASSERT_EQ(ParseNumber(text, number), expected.has_value()) << '"' << text << '"';
    ASSERT_TRUE(AreSame(number, expected.value_or(0.0))) << '"' << text << "\" is " << number;
    double wide_number = 0.0;
    const std::u16string wide(text.begin(), text.end());
    ASSERT_EQ(ParseNumber(wide, wide_number), expected.has_value()) << '"' << text << '"';
    ASSERT_TRUE(AreSame(wide_number, number)) << '"' << text << '"';

    const std::optional<std::int32_t> expected_integer = IntegerOfLibrary(text);
    std::int32_t integer = 0;
    ASSERT_EQ(ParseInteger(text, integer), expected_integer.has_value()) << '"' << text << '"';
    ASSERT_EQ(integer, expected_integer.value_or(0)) << '"' << text << '"';
}

TEST(TextNumber, random_texts_are_read_as_the_c_library_reads_them) {
    const char* const given = std::getenv("METRIFY_TEXTS");
    const long count = given ? std::atol(given) : 100'000;
    RandomTexts texts;
    for (long i = 0; i < count / 2 && !HasFatalFailure(); ++i) {
        ExpectReadAsByLibrary(texts.Pieces());
        ExpectReadAsByLibrary(texts.NumberShaped());
    }
}

} // namespace
