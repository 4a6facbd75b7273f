// Code page 1252, every byte of it, and what stands for units that it does not hold.

#include "xllrt/code_page.h"

#include <gtest/gtest.h>

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
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        if (byte < 0x80 || byte > 0x9F) {
            ExpectPair(byte, static_cast<char16_t>(byte));
        }
    }
}

TEST(CodePage1252, the_bytes_from_0x80_to_0x9F_are_these_units) {
    ASSERT_EQ(std::size(kHighBytes), 32u);
    for (const HighByte& row : kHighBytes) {
        ExpectPair(row.byte, row.unit);
    }
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
        if (unit != 0xFF1F) {
            EXPECT_EQ(ToNarrow(std::u16string(1, unit)), ByteText(unit - 0xFEE0U)) << unsigned{unit};
        }
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
