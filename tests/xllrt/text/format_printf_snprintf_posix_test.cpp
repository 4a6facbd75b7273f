// Random conversions have the same result as in the C library.

#include "xllrt/text/format_printf.h"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace metrify;

class RandomConversions {
  public:
    unsigned Below(std::size_t bound) { return static_cast<unsigned>(engine_() % bound); }

    // All but the letter, which is one of those passed.
    std::string Conversion(const std::vector<const char*>& letters) {
        std::string text = "<%";
        for (const char flag : std::string("-+ #0"))
            if (Below(3) == 0)
                text += flag;
        if (Below(2) == 0)
            text += std::to_string(1 + Below(24));
        if (Below(2) == 0)
            text += "." + (Below(6) == 0 ? std::string() : std::to_string(Below(24)));
        return text + letters[Below(letters.size())] + ">";
    }

    std::uint64_t Integer() { return engine_() >> Below(64); }

    double Number() {
        switch (Below(4)) {
        case 0:
            return static_cast<double>(Below(4096)) / 64;
        case 1:
            return -static_cast<double>(engine_()) / 1e15;
        default:
            return std::bit_cast<double>(engine_()); // of any size, also infinities and not-a-numbers
        }
    }

  private:
    std::mt19937_64 engine_{20260112};
};

void ExpectAsByLibrary(const std::string& format, auto argument) {
    std::string expected(kPrintfBuffer, '\0');
    const int length = std::snprintf(expected.data(), expected.size(), format.c_str(), argument);
    expected.resize(static_cast<std::size_t>(length));
    std::string narrow;
    FormatPrintf(narrow, format.c_str(), argument);
    ASSERT_EQ(narrow, expected) << format;
    std::u16string wide;
    FormatPrintf(wide, std::u16string(format.begin(), format.end()).c_str(), argument);
    ASSERT_EQ(wide, std::u16string(expected.begin(), expected.end())) << format;
}

TEST(FormatPrintf, random_conversions_equal_those_of_the_c_library) {
    RandomConversions random;
    for (int i = 0; i < 3'000 && !testing::Test::HasFatalFailure(); ++i) {
        const std::uint64_t integer = random.Integer();
        ExpectAsByLibrary(random.Conversion({"d", "i", "u", "o", "x", "X", "hd", "hi", "hu", "ho", "hx", "hX",
                                             "hhd", "hhi", "hhu", "hho", "hhx", "hhX"}),
                          static_cast<int>(integer));
        ExpectAsByLibrary(random.Conversion({"d", "u", "x", "hd", "hhu"}), static_cast<unsigned>(integer));
        ExpectAsByLibrary(random.Conversion({"lld", "lli", "llu", "llo", "llx", "llX", "jd", "ju", "jx"}),
                          static_cast<long long>(integer));
        ExpectAsByLibrary(random.Conversion({"ld", "lu", "lo", "lx", "zu", "zx", "td"}),
                          static_cast<long>(integer));
        ExpectAsByLibrary(random.Conversion({"e", "E", "f", "F", "g", "G", "a", "A", "lf", "lg"}),
                          random.Number());
    }
}

TEST(FormatPrintf, pointers_equal_those_of_the_c_library) {
    const int target = 0;
    for (const char* format : {"<%p>", "<%20p>", "<%-20p>"}) {
        ExpectAsByLibrary(format, static_cast<const void*>(&target));
        ExpectAsByLibrary(format, static_cast<const void*>(nullptr));
    }
}

} // namespace
