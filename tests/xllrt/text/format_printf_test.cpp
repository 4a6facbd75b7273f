#include "xllrt/text/format_printf.h"

#include <cstddef>
#include <cstdint>
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

TEST(FormatPrintf, texts_are_inserted) {
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

TEST(FormatPrintf, numbers_have_six_digits_by_default) {
    EXPECT_EQ(Printed("%g %f %lf %e", 0.1, 2.5, -2.5, 1500.0), "0.1 2.500000 -2.500000 1.500000e+03");
    EXPECT_EQ(Printed("%Lf %d", 2.5, 7), "2.500000 7");
    EXPECT_EQ(Printed("%.2f|%08.2f|%G", 1.005, -1.5, 1e-10), "1.00|-0001.50|1E-10");
    EXPECT_EQ(WidePrinted(u"%g", 1e300), u"1e+300");
}

TEST(FormatPrintf, a_length_takes_the_lowest_bits) {
    EXPECT_EQ(Printed("%hd|%hd|%hu|%hx", 70000, -70000, -1, 0x12345), "4464|-4464|65535|2345");
    EXPECT_EQ(Printed("%hhd|%hhd|%hhu|%hhX", 200, 300, 300, -1), "-56|44|44|FF");
    EXPECT_EQ(Printed("%lld|%jd|%llx", -1, 1LL << 40, 1ULL << 63), "-1|1099511627776|8000000000000000");
    EXPECT_EQ(Printed("%ld|%zu|%td", -5L, std::size_t{5}, std::ptrdiff_t{-5}), "-5|5|-5");
    EXPECT_EQ(Printed("%llx|%jx|%lx", -1, -1, -1), "ffffffffffffffff|ffffffffffffffff|ffffffff");
    EXPECT_EQ(WidePrinted(u"%hd", 70000), u"4464");
}

TEST(FormatPrintf, a_signed_conversion_reads_the_bits_of_an_unsigned_argument) {
    EXPECT_EQ(Printed("%d %u", 4294967295U, -1), "-1 4294967295");
    const unsigned char byte = 200;
    EXPECT_EQ(Printed("%d %u", byte, true), "200 1") << "small types are passed as int";
}

TEST(FormatPrintf, a_number_sign_asks_for_the_alternate_form) {
    EXPECT_EQ(Printed("%#x|%#X|%#x|%#llx", 255, 255, 0, 1ULL << 40), "0xff|0XFF|0|0x10000000000");
    EXPECT_EQ(Printed("%#o|%#o|%#.3o|%#.0o", 8, 0, 8, 0), "010|0|010|0");
    EXPECT_EQ(Printed("%#.0f|%#.0e|%#g|%#.3g|%#.0a", 3.0, 1500.0, 2.5, 1e6, 1.0),
              "3.|2.e+03|2.50000|1.00e+06|0x1.p+0");
    EXPECT_EQ(Printed("%#8x|%#08x|%-#8x|%#.4x", 255, 255, 255, 255), "    0xff|0x0000ff|0xff    |0x00ff");
    EXPECT_EQ(Printed("%#g|%#G", 1e-5, 1e-4), "1.00000e-05|0.000100000");
    EXPECT_EQ(Printed("%#.3g|%#.3g|%#.0g", 999.0, 1000.0, 2.0), "999.|1.00e+03|2.");
}

TEST(FormatPrintf, a_star_takes_width_or_precision_from_the_arguments) {
    EXPECT_EQ(Printed("%*d|%-*d|%*d", 5, 42, 5, 42, -5, 42), "   42|42   |42   ");
    EXPECT_EQ(Printed("%.*f|%.*f|%.*s", 2, 1.0, -1, 1.0, 2, "abc"), "1.00|1.000000|ab");
    EXPECT_EQ(Printed("%*.*f", 8, 3, 2.0), "   2.000");
    EXPECT_EQ(WidePrinted(u"%*s", 4, u"ab"), u"  ab");
    EXPECT_EQ(Printed("%*d", std::numeric_limits<int>::min(), 1).size(), 2047U);
}

TEST(FormatPrintf, a_star_without_an_integer_leaves_conversion_and_arguments) {
    EXPECT_EQ(Printed("%*d %s", "text", 1), "%*d text");
    EXPECT_EQ(Printed("%*d", 5), "%*d");
    EXPECT_EQ(Printed("%*s", "text"), "%*s");
    EXPECT_EQ(Printed("%*s %d", 5, 6), "%*s 5");
}

TEST(FormatPrintf, precision_0_of_an_integer_0_has_no_digits) {
    EXPECT_EQ(Printed("<%.0d>|<%+.d>|<%5.0u>|<%.0x>", 0, 0, 0, 0), "<>|<+>|<     >|<>");
    EXPECT_EQ(Printed("<%.0d>", 1), "<1>");
}

TEST(FormatPrintf, flags_are_taken_in_any_order) {
    EXPECT_EQ(Printed("%-+6d|%+-6d|%0-6d|%-06d", 42, 42, 42, 42), "+42   |+42   |42    |42    ");
    EXPECT_EQ(Printed("%+ d|% +d|% x|%+u", 42, 42, 42, 42), "+42|+42|2a|42");
    EXPECT_EQ(Printed("%05s|%05c", "ab", 'a'), "   ab|    a");
}

TEST(FormatPrintf, hexadecimal_floating_point_numbers_have_as_many_digits_as_necessary) {
    EXPECT_EQ(Printed("%a|%A|%a", 1.5, 10.0, 0.0), "0x1.8p+0|0X1.4P+3|0x0p+0");
    EXPECT_EQ(Printed("%.2a|%.0a|%12a|%012a|%+a", 1.0, 1.5, 1.0, 1.0, 1.0),
              "0x1.00p+0|0x2p+0|      0x1p+0|0x0000001p+0|+0x1p+0");
    EXPECT_EQ(Printed("%a", 5e-324), "0x0.0000000000001p-1022");
}

TEST(FormatPrintf, infinities_and_nans_are_words_without_zeros) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Printed("%f|%F|%e|%a", infinity, -infinity, nan, nan), "inf|-INF|nan|nan");
    EXPECT_EQ(Printed("%06f|%+G|%#a", infinity, infinity, infinity), "   inf|+INF|inf");
}

TEST(FormatPrintf, pointers_are_written_in_hexadecimal) {
    const auto* pointer = reinterpret_cast<const void*>(std::uintptr_t{0x12AB});
    EXPECT_EQ(Printed("%p|%10p|%-10p|", pointer, pointer, pointer), "0x12ab|    0x12ab|0x12ab    |");
    EXPECT_EQ(Printed("%010p", pointer), "0x000012ab");
    EXPECT_EQ(Printed("%p", static_cast<const void*>(nullptr)), "(nil)");
    EXPECT_EQ(WidePrinted(u"%p", pointer), u"0x12ab");
    const char* text = "abc";
    EXPECT_EQ(Printed("%p", text), Printed("%p", static_cast<const void*>(text)));
}

TEST(FormatPrintf, texts_of_the_other_width_are_converted_if_the_length_names_it) {
    EXPECT_EQ(Printed("%ls|%hs|%.2ls", u"caf\u00E9", "b", u"abc"), "caf\xE9|b|ab");
    EXPECT_EQ(WidePrinted(u"%hs|%ls", "caf\xE9", u"b"), u"caf\u00E9|b");
    EXPECT_EQ(Printed("%ls", std::u16string(u"a")), "a");
    EXPECT_EQ(Printed("%lc%c", 0x00E9, 'a'), "\xE9"
                                             "a");
    EXPECT_EQ(WidePrinted(u"%hc%c%lc", 0x80, u'\u0416', u'\u0416'), u"\u20AC\u0416\u0416");
    EXPECT_EQ(Printed("%s", u"wide"), "%s");
    EXPECT_EQ(Printed("%ls", "narrow"), "%ls");
}

TEST(FormatPrintf, an_unknown_conversion_stays_and_takes_no_argument) {
    EXPECT_EQ(Printed("%y %d", 1), "%y 1");
    EXPECT_EQ(Printed("%-+5.3lk %d", 1), "%-+5.3lk 1");
    EXPECT_EQ(Printed("%n %d", 1), "%n 1");
    EXPECT_EQ(Printed("%5%|%hhhd %d", 1), "%5%|%hhhd 1");
    EXPECT_EQ(Printed("%#", 1), "%#");
    EXPECT_EQ(WidePrinted(u"%\u0164 %d", 1), u"%\u0164 1") << "low byte 'd'";
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
