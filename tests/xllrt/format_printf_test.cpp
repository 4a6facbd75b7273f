#include "xllrt/format_printf.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using metrify::FormatPrintf;

std::string Printed(const char* format, auto... arguments) {
    std::string text;
    FormatPrintf(text, format, arguments...);
    return text;
}

std::u16string WidePrinted(const char16_t* format, auto... arguments) {
    std::u16string text;
    FormatPrintf(text, format, arguments...);
    return text;
}

TEST(FormatPrintf, texts_take_their_place) {
    EXPECT_EQ(Printed("XLL %s", "C:\\addin.xll"), "XLL C:\\addin.xll");
    EXPECT_EQ(Printed("[%s]%s", std::string("Book1"), "Sheet1"), "[Book1]Sheet1");
    EXPECT_EQ(WidePrinted(u"xll_%s_observer", u"metrify\u00b5"), u"xll_metrify\u00b5_observer");
    EXPECT_EQ(Printed("%s|%5s|%-5s|%.2s", "ab", "ab", "ab", "abc"), "ab|   ab|ab   |ab");
    EXPECT_EQ(Printed("100%%"), "100%");
}

TEST(FormatPrintf, integers_are_written_in_their_base) {
    EXPECT_EQ(Printed("%d %i %ld", 0, -17, 2147483648L), "0 -17 2147483648");
    EXPECT_EQ(Printed("0x%lX", 0xC0000005UL), "0xC0000005");
    EXPECT_EQ(Printed("%x %o %u", 255, 8, -1), "ff 10 4294967295");
    EXPECT_EQ(WidePrinted(u"%05d|%5d|%-5d|%+d|% d", -42, 42, 42, 42, 42), u"-0042|   42|42   |+42| 42");
    EXPECT_EQ(Printed("%.3d|%06.3d", 7, 7), "007|   007");
    EXPECT_EQ(Printed("%lld", std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(Printed("%c%c", 'a', 'b'), "ab");
}

TEST(FormatPrintf, numbers_have_six_digits_unless_told_otherwise) {
    EXPECT_EQ(Printed("%g %f %lf %e", 0.1, 2.5, -2.5, 1500.0), "0.1 2.500000 -2.500000 1.500000e+03");
    EXPECT_EQ(Printed("%.2f|%08.2f|%G", 1.005, -1.5, 1e-10), "1.00|-0001.50|1E-10");
    EXPECT_EQ(WidePrinted(u"%g", 1e300), u"1e+300");
}

TEST(FormatPrintf, a_long_result_is_cut_to_the_buffer) {
    const std::string long_text(5000, 'x');
    EXPECT_EQ(Printed("%s", long_text), std::string(2047, 'x'));
    EXPECT_EQ(Printed(long_text.c_str()), std::string(2047, 'x'));
    EXPECT_EQ(Printed("%s", std::string(2047, 'x')), std::string(2047, 'x'));
    EXPECT_EQ(WidePrinted(u"a%s", std::u16string(5000, u'x')), u"a" + std::u16string(2046, u'x'));
    EXPECT_EQ(Printed("%5000d", 1).size(), 2047U);
}

TEST(FormatPrintf, a_conversion_without_its_argument_stays) {
    EXPECT_EQ(Printed("%s and %d"), "%s and %d");
    EXPECT_EQ(Printed("%d", "text"), "%d");
    EXPECT_EQ(Printed("%s", 1), "%s");
    EXPECT_EQ(Printed("%", 1), "%");
    EXPECT_EQ(Printed("%5q", 1), "%5q");
}

TEST(FormatPrintf, the_old_text_may_be_an_argument) {
    std::string text = "b";
    FormatPrintf(text, "a%sc", text);
    EXPECT_EQ(text, "abc");
}

} // namespace
