// Code page 1252, every byte of it, and what replaces units that it does not hold.

#include "xllrt/text/code_page.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace metrify;

// The bytes from 0x80 to 0x9F. Five of them have no character and stand for the control of their own number.
struct HighByte {
    unsigned char byte;
    char16_t unit;
};
constexpr HighByte kHighBytes[] = {
    {0x80, 0x20AC},                                 // euro sign
    {0x81, 0x0081}, {0x82, 0x201A},                 // single low quotation mark
    {0x83, 0x0192},                                 // f with hook
    {0x84, 0x201E},                                 // double low quotation mark
    {0x85, 0x2026},                                 // ellipsis
    {0x86, 0x2020},                                 // dagger
    {0x87, 0x2021},                                 // double dagger
    {0x88, 0x02C6},                                 // modifier circumflex
    {0x89, 0x2030},                                 // per mille
    {0x8A, 0x0160},                                 // S with caron
    {0x8B, 0x2039},                                 // single left angle quotation mark
    {0x8C, 0x0152},                                 // OE
    {0x8D, 0x008D}, {0x8E, 0x017D},                 // Z with caron
    {0x8F, 0x008F}, {0x90, 0x0090}, {0x91, 0x2018}, // left single quotation mark
    {0x92, 0x2019},                                 // right single quotation mark
    {0x93, 0x201C},                                 // left double quotation mark
    {0x94, 0x201D},                                 // right double quotation mark
    {0x95, 0x2022},                                 // bullet
    {0x96, 0x2013},                                 // en dash
    {0x97, 0x2014},                                 // em dash
    {0x98, 0x02DC},                                 // small tilde
    {0x99, 0x2122},                                 // trade mark
    {0x9A, 0x0161},                                 // s with caron
    {0x9B, 0x203A},                                 // single right angle quotation mark
    {0x9C, 0x0153},                                 // oe
    {0x9D, 0x009D}, {0x9E, 0x017E},                 // z with caron
    {0x9F, 0x0178},                                 // Y with diaeresis
};

std::string ByteText(unsigned byte) {
    return {static_cast<char>(byte)};
}

void ExpectPair(unsigned byte, char16_t unit) {
    EXPECT_EQ(ToWide(ByteText(byte)), std::u16string(1, unit)) << "byte " << byte;
    EXPECT_EQ(ToNarrow(std::u16string(1, unit)), ByteText(byte)) << "byte " << byte;
}

TEST(CodePage1252, a_byte_below_0x80_or_from_0xA0_is_the_unit_of_its_number) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte)
        if (byte < 0x80 || byte > 0x9F)
            ExpectPair(byte, static_cast<char16_t>(byte));
}

TEST(CodePage1252, the_bytes_from_0x80_to_0x9F_are_these_units) {
    ASSERT_EQ(std::size(kHighBytes), 32u);
    for (const HighByte& row : kHighBytes)
        ExpectPair(row.byte, row.unit);
}

TEST(CodePage1252, a_text_keeps_its_length_and_order) {
    std::string narrow;
    std::u16string wide;
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        narrow += static_cast<char>(byte);
        const bool is_high = byte >= 0x80 && byte <= 0x9F;
        wide += is_high ? kHighBytes[byte - 0x80].unit : static_cast<char16_t>(byte);
    }
    EXPECT_EQ(ToWide(narrow), wide);
    EXPECT_EQ(ToNarrow(wide), narrow);
    EXPECT_EQ(ToWide(""), u"");
    EXPECT_EQ(ToNarrow(u""), "");
}

// ---- Units that the page does not hold

// The units that become a byte which is not their own: letters without their mark, signs that look alike.
// Full width forms of ASCII, which have a rule, are left out.
struct BestFit {
    unsigned byte;
    std::vector<char16_t> units;
};
const std::vector<BestFit>& BestFits() {
    static const std::vector<BestFit> rows = {
        {0x20, {0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x3000}},
        {0x21, {0x01C3}},
        {0x22, {0x02BA, 0x030E}},
        {0x25, {0x066A}},
        {0x27, {0x02B9, 0x02BC, 0x02C8, 0x2032}},
        {0x28, {0x2320}},
        {0x29, {0x2321}},
        {0x2A, {0x2217}},
        {0x2B, {0x250C, 0x2510, 0x2514, 0x2518, 0x251C, 0x253C, 0x2552, 0x2553, 0x2554, 0x2555, 0x2556,
                0x2557, 0x2558, 0x2559, 0x255A, 0x255B, 0x255C, 0x255D, 0x256A, 0x256B, 0x256C}},
        {0x2D,
         {0x2010, 0x2011, 0x2212, 0x2500, 0x252C, 0x2534, 0x2550, 0x2564, 0x2565, 0x2566, 0x2567, 0x2568,
          0x2569}},
        {0x2F, {0x2044, 0x2215}},
        {0x30, {0x2080}},
        {0x31, {0x2081}},
        {0x32, {0x2082}},
        {0x33, {0x2083}},
        {0x34, {0x2074, 0x2084}},
        {0x35, {0x2075, 0x2085}},
        {0x36, {0x2076, 0x2086}},
        {0x37, {0x2077, 0x2087}},
        {0x38, {0x2078, 0x2088, 0x221E}},
        {0x39, {0x2089}},
        {0x3A, {0x0589, 0x2236}},
        {0x3B, {0x037E}},
        {0x3C, {0x2329, 0x3008}},
        {0x3D, {0x2017, 0x2261, 0x2264, 0x2265}},
        {0x3E, {0x232A, 0x3009}},
        {0x41, {0x0100, 0x0102, 0x0104, 0x01CD, 0x01DE}},
        {0x42, {0x212C}},
        {0x43, {0x0106, 0x0108, 0x010A, 0x010C, 0x2102, 0x212D}},
        {0x44, {0x010E}},
        {0x45, {0x0112, 0x0114, 0x0116, 0x0118, 0x011A, 0x2107, 0x2130}},
        {0x46, {0x03A6, 0x2131}},
        {0x47, {0x011C, 0x011E, 0x0120, 0x0122, 0x01E4, 0x01E6, 0x0393}},
        {0x48, {0x0124, 0x0126, 0x210B, 0x210C, 0x210D}},
        {0x49, {0x0128, 0x012A, 0x012C, 0x012E, 0x0130, 0x0197, 0x01CF, 0x2110, 0x2111}},
        {0x4A, {0x0134}},
        {0x4B, {0x0136, 0x01E8, 0x212A}},
        {0x4C, {0x0139, 0x013B, 0x013D, 0x0141, 0x2112}},
        {0x4D, {0x2133}},
        {0x4E, {0x0143, 0x0145, 0x0147, 0x2115}},
        {0x4F, {0x014C, 0x014E, 0x0150, 0x019F, 0x01A0, 0x01D1, 0x01EA, 0x01EC, 0x03A9}},
        {0x50, {0x20A7, 0x2118, 0x2119}},
        {0x51, {0x211A}},
        {0x52, {0x0154, 0x0156, 0x0158, 0x211B, 0x211C, 0x211D}},
        {0x53, {0x015A, 0x015C, 0x015E, 0x03A3}},
        {0x54, {0x0162, 0x0164, 0x0166, 0x01AE, 0x0398}},
        {0x55,
         {0x0168, 0x016A, 0x016C, 0x016E, 0x0170, 0x0172, 0x01AF, 0x01D3, 0x01D5, 0x01D7, 0x01D9, 0x01DB}},
        {0x57, {0x0174}},
        {0x59, {0x0176}},
        {0x5A, {0x0179, 0x017B, 0x2124, 0x2128}},
        {0x5B, {0x301A}},
        {0x5C, {0x2216}},
        {0x5D, {0x301B}},
        {0x5E, {0x02C4, 0x0302, 0x2303}},
        {0x5F, {0x02CD, 0x0331, 0x0332, 0x2584}},
        {0x60, {0x02CB, 0x0300, 0x2035}},
        {0x61, {0x0101, 0x0103, 0x0105, 0x01CE, 0x01DF, 0x03B1}},
        {0x62, {0x0180}},
        {0x63, {0x0107, 0x0109, 0x010B, 0x010D}},
        {0x64, {0x010F, 0x0111, 0x03B4}},
        {0x65, {0x0113, 0x0115, 0x0117, 0x0119, 0x011B, 0x03B5, 0x212E, 0x212F}},
        {0x66, {0x03C6}},
        {0x67, {0x011D, 0x011F, 0x0121, 0x0123, 0x01E5, 0x01E7, 0x0261, 0x210A}},
        {0x68, {0x0125, 0x0127, 0x04BB, 0x210E}},
        {0x69, {0x0129, 0x012B, 0x012D, 0x012F, 0x0131, 0x01D0}},
        {0x6A, {0x0135, 0x01F0}},
        {0x6B, {0x0137, 0x01E9}},
        {0x6C, {0x013A, 0x013C, 0x013E, 0x0142, 0x019A, 0x2113}},
        {0x6E, {0x0144, 0x0146, 0x0148, 0x207F, 0x2229}},
        {0x6F, {0x014D, 0x014F, 0x0151, 0x01A1, 0x01D2, 0x01EB, 0x01ED, 0x2134}},
        {0x70, {0x03C0}},
        {0x72, {0x0155, 0x0157, 0x0159}},
        {0x73, {0x015B, 0x015D, 0x015F, 0x03C3}},
        {0x74, {0x0163, 0x0165, 0x0167, 0x01AB, 0x03C4}},
        {0x75,
         {0x0169, 0x016B, 0x016D, 0x016F, 0x0171, 0x0173, 0x01B0, 0x01D4, 0x01D6, 0x01D8, 0x01DA, 0x01DC}},
        {0x76, {0x221A}},
        {0x77, {0x0175}},
        {0x79, {0x0177}},
        {0x7A, {0x017A, 0x017C, 0x01B6}},
        {0x7C, {0x01C0, 0x2223, 0x2758}},
        {0x7E, {0x0303, 0x223C}},
        {0x83, {0x0191}},
        {0x98, {0x2248}},
        {0xA2, {0x20A1}},
        {0xA3, {0x20A4}},
        {0xA4, {0x263C}},
        {0xA6,
         {0x2302, 0x2502, 0x2524, 0x2551, 0x255E, 0x255F, 0x2560, 0x2561, 0x2562, 0x2563, 0x2588, 0x258C,
          0x2590, 0x2591, 0x2592, 0x2593, 0x25A0}},
        {0xA8, {0x0308}},
        {0xAB, {0x226A, 0x300A}},
        {0xAC, {0x2310}},
        {0xAF, {0x02C9, 0x0304, 0x0305, 0x2580}},
        {0xB0, {0x02DA, 0x030A, 0x2070, 0x2218}},
        {0xB1, {0x2213}},
        {0xB4, {0x02CA, 0x0301}},
        {0xB5, {0x03BC}},
        {0xB7, {0x2024, 0x2219, 0x22C5, 0x30FB}},
        {0xB8, {0x0327}},
        {0xBB, {0x226B, 0x300B}},
        {0xC5, {0x212B}},
        {0xD0, {0x0110, 0x0189}},
        {0xD8, {0x2205}},
        {0xDF, {0x03B2}},
    };
    return rows;
}

// The byte that a unit becomes.
unsigned ExpectedByte(char16_t unit) {
    static const std::map<char16_t, unsigned> bytes = [] {
        std::map<char16_t, unsigned> all;
        for (const BestFit& row : BestFits())
            for (const char16_t fitted : row.units)
                all[fitted] = row.byte;
        for (const HighByte& row : kHighBytes)
            all[row.unit] = row.byte;
        return all;
    }();
    if (const auto found = bytes.find(unit); found != bytes.end())
        return found->second;
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return unit;
    const bool is_full_width = unit >= 0xFF01 && unit <= 0xFF5E;
    return is_full_width ? unit - 0xFEE0U : unsigned{'?'};
}

TEST(CodePage1252, every_unit_becomes_its_byte_or_what_looks_like_it_or_a_question_mark) {
    for (unsigned number = 0; number <= 0xFFFF; ++number) {
        const auto unit = static_cast<char16_t>(number);
        const bool is_half_of_a_pair = number >= 0xD800 && number <= 0xDFFF;
        if (is_half_of_a_pair)
            continue;
        EXPECT_EQ(ToNarrow(std::u16string(1, unit)), ByteText(ExpectedByte(unit))) << "unit " << number;
    }
}

// The bytes of the units from `first` on.
void ExpectRun(char16_t first, const std::string& bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto unit = static_cast<char16_t>(first + i);
        EXPECT_EQ(ToNarrow(std::u16string(1, unit)), bytes.substr(i, 1)) << "unit " << unsigned{unit};
    }
}

TEST(CodePage1252, a_latin_letter_with_a_mark_becomes_the_plain_letter_or_its_own_byte) {
    ExpectRun(0x0100, "AaAaAaCcCcCcCcDd");
    ExpectRun(0x0110, "\xD0"
                      "dEeEeEeEeEeGgGg");
    ExpectRun(0x0120, "GgGgHhHhIiIiIiIi");
    ExpectRun(0x0130, "Ii??JjKk?LlLlLl?");
    ExpectRun(0x0140, "?LlNnNnNn???OoOo");
    ExpectRun(0x0150, "Oo\x8C\x9CRrRrRrSsSsSs");
    ExpectRun(0x0160, "\x8A\x9ATtTtTtUuUuUuUu");
    ExpectRun(0x0170, "UuUuWwYy\x9FZzZz\x8E\x9E?");
}

TEST(CodePage1252, a_full_width_form_becomes_the_plain_character) {
    for (char16_t unit = 0xFF01; unit <= 0xFF5E; ++unit) {
        if (unit == 0xFF1F)
            continue;
        EXPECT_EQ(ToNarrow(std::u16string(1, unit)), ByteText(unit - 0xFEE0U)) << unsigned{unit};
    }
    ExpectRun(0xFF1F, "?");
    ExpectRun(0xFF5F, "?");
    ExpectRun(0xFF00, "?");
}

TEST(CodePage1252, signs_of_units_and_formulas_become_what_looks_like_them) {
    ExpectRun(0x2000, "       ?"); // spaces of several widths
    ExpectRun(0x2010, "--?\x96\x97?");
    ExpectRun(0x2018, "\x91\x92\x82?\x93\x94\x84?\x86\x87\x95?");
    ExpectRun(0x2032, "'??`");
    ExpectRun(0x2044, "/");
    ExpectRun(0x2070, "\xB0???45678?"); // superscripts; 1, 2 and 3 have bytes of their own
    ExpectRun(0x207F, "n0123456789?");  // and subscripts
    ExpectRun(0x212A, "K\xC5");         // kelvin and angstrom
    ExpectRun(0x2212, "-\xB1");
    ExpectRun(0x2215, "/\\*\xB0\xB7v");
    ExpectRun(0x221E, "8");
    ExpectRun(0x2264, "==");
    ExpectRun(0x03BC, "\xB5"); // the Greek letter for the micro sign
    ExpectRun(0x03C0, "p");
    ExpectRun(0x03A9, "O");
    ExpectRun(0x03B1, "a\xDF?de?");
}

TEST(CodePage1252, anything_else_becomes_a_question_mark) {
    EXPECT_EQ(ToNarrow(u"\u0416\u05D0\u4E2D\uFFFD"), "????");
    const std::u16string astral = u"\U0001F600";
    EXPECT_EQ(ToNarrow(astral).find_first_not_of('?'), std::string::npos);
}

} // namespace
