// Limits of UTF-8, references and type texts.

#include "host/sheet/cell_reference.h"
#include "host/sheet/utf8.h"
#include "host/state/entry_type.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

TEST(utf8_edges, the_first_and_last_character_of_every_length) {
    const struct {
        std::string bytes;
        std::u16string units;
    } rows[] = {{"\x01", u"\u0001"},
                {"\x7F", u"\u007F"},
                {"\xC2\x80", u"\u0080"},
                {"\xDF\xBF", u"\u07FF"},
                {"\xE0\xA0\x80", u"\u0800"},
                {"\xED\x9F\xBF", u"\uD7FF"},
                {"\xEE\x80\x80", u"\uE000"},
                {"\xEF\xBF\xBF", u"\uFFFF"},
                {"\xF0\x90\x80\x80", u"\U00010000"},
                {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"}};
    for (const auto& row : rows) {
        EXPECT_EQ(FromUtf8(row.bytes), row.units);
        EXPECT_EQ(ToUtf8(row.units), row.bytes);
    }
}

TEST(utf8_edges, overlong_sequences_are_replaced) {
    EXPECT_EQ(FromUtf8("\xC1\xBF"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xE0\x9F\xBF"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xF0\x8F\xBF\xBF"), u"\uFFFD");
}

TEST(utf8_edges, invalid_characters_are_replaced) {
    EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xED\xBF\xBF"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xF8"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\x80"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xBF"), u"\uFFFD");
}

TEST(utf8_edges, an_incomplete_sequence_does_not_consume_the_next_character) {
    EXPECT_EQ(FromUtf8("\xC2z"), u"\uFFFDz");
    EXPECT_EQ(FromUtf8("\xE2\x84z"), u"\uFFFDz");
    EXPECT_EQ(FromUtf8("\xE2\xC2\xB5"), u"\uFFFD\u00B5");
}

TEST(utf8_edges, surrogates_are_valid_in_pairs) {
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xD83D}, char16_t{0xDCCF}}), "\xF0\x9F\x93\x8F");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDBFF}, char16_t{0xDFFF}}), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xD800}, char16_t{0xD800}, char16_t{0xDC00}}),
              "\xEF\xBF\xBD\xF0\x90\x80\x80");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDBFF}}), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDFFF}, u'a'}), "\xEF\xBF\xBD"
                                                              "a");
}

constexpr SheetSize wide_sheet{1048576, 16384};
constexpr SheetSize narrow_sheet{65536, 256};

std::optional<ReadReferenceResult> ReadA1(std::u16string_view text, SheetSize size = wide_sheet) {
    return ReadCellReference(text, ReferenceStyle::a1, {}, size);
}

std::optional<ReadReferenceResult> ReadR1C1(std::u16string_view text) {
    return ReadCellReference(text, ReferenceStyle::r1c1, {5, 7}, wide_sheet);
}

TEST(cell_reference_edges, a1_ends_at_the_sheets_end) {
    EXPECT_EQ(ReadA1(u"XFD1048576")->reference.at, (CellPosition{1048575, 16383}));
    EXPECT_FALSE(ReadA1(u"XFD1048577"));
    EXPECT_FALSE(ReadA1(u"XFE1048576"));
    EXPECT_EQ(ReadA1(u"IV65536", narrow_sheet)->reference.at, (CellPosition{65535, 255}));
    EXPECT_FALSE(ReadA1(u"IV65537", narrow_sheet));
    EXPECT_FALSE(ReadA1(u"IW65536", narrow_sheet));
    EXPECT_FALSE(ReadA1(u"A99999999999999999999"));
    EXPECT_FALSE(ReadA1(u"ABCDEFGHIJKLMNOP1"));
}

TEST(cell_reference_edges, the_limits_of_digits_and_letters_allow_larger_sheets) {
    constexpr SheetSize huge{9999999, 20000};
    EXPECT_EQ(ReadA1(u"A9999999", huge)->reference.at.row, 9999998);
    EXPECT_EQ(ReadA1(u"ZZZ1", huge)->reference.at.column, 18277);
    EXPECT_FALSE(ReadA1(u"AAAA1", huge));
    EXPECT_FALSE(ReadA1(u"A00000001", huge));
}

TEST(cell_reference_edges, a1_letters_have_either_case_and_dollars_make_absolute) {
    const auto row = ReadA1(u"b$3");
    ASSERT_TRUE(row);
    EXPECT_EQ(row->reference.at, (CellPosition{2, 1}));
    EXPECT_TRUE(row->reference.row_is_absolute);
    EXPECT_FALSE(row->reference.column_is_absolute);
    const auto column = ReadA1(u"$z3");
    ASSERT_TRUE(column);
    EXPECT_EQ(column->reference.at, (CellPosition{2, 25}));
    EXPECT_FALSE(column->reference.row_is_absolute);
    EXPECT_TRUE(column->reference.column_is_absolute);
    EXPECT_FALSE(ReadA1(u"$$A1"));
    EXPECT_FALSE(ReadA1(u"1"));
    EXPECT_FALSE(ReadA1(u"A"));
    EXPECT_FALSE(ReadA1(u""));
}

TEST(cell_reference_edges, a_reference_ends_where_a_name_would_end) {
    for (const char16_t* text : {u"A1 ", u"A1:", u"A1+", u"A1)", u"A1$", u"A1[", u"A1@", u"A1`", u"A1{"})
        EXPECT_EQ(ReadA1(text).value_or(ReadReferenceResult{}).length, 2U) << ToUtf8(text);
    for (const char16_t* text :
         {u"A1(", u"A1.", u"A1_", u"A1z", u"A1Z", u"A1a", u"A1A", u"A1\u0080", u"A1\u00E4"})
        EXPECT_FALSE(ReadA1(text)) << ToUtf8(text);
}

TEST(cell_reference_edges, columns_are_written_in_letters) {
    const auto text = [](std::int32_t column) {
        return CellReferenceText({{8, column}, false, false}, ReferenceStyle::a1, {});
    };
    EXPECT_EQ(text(0), u"A9");
    EXPECT_EQ(text(51), u"AZ9");
    EXPECT_EQ(text(52), u"BA9");
    EXPECT_EQ(text(701), u"ZZ9");
    EXPECT_EQ(text(702), u"AAA9");
    EXPECT_EQ(CellReferenceText({{8, 1}, true, false}, ReferenceStyle::a1, {}), u"B$9");
    EXPECT_EQ(CellReferenceText({{8, 1}, false, true}, ReferenceStyle::a1, {}), u"$B9");
}

TEST(cell_reference_edges, r1c1_axes_are_absolute_relative_or_the_base) {
    const auto read = ReadR1C1(u"r2c[3]");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reference.at, (CellPosition{1, 10}));
    EXPECT_TRUE(read->reference.row_is_absolute);
    EXPECT_FALSE(read->reference.column_is_absolute);
    EXPECT_EQ(ReadR1C1(u"RC")->reference.at, (CellPosition{5, 7}));
    EXPECT_FALSE(ReadR1C1(u"RC")->reference.row_is_absolute);
    EXPECT_EQ(ReadR1C1(u"R[-5]C[-7]")->reference.at, (CellPosition{0, 0}));
    EXPECT_EQ(ReadR1C1(u"RC1")->reference.at, (CellPosition{5, 0}));
    EXPECT_TRUE(ReadR1C1(u"RC1")->reference.column_is_absolute);
    for (const char16_t* text :
         {u"R", u"C", u"R1", u"CR", u"R[C", u"R[1C1", u"R[]C", u"R[-]C", u"R1C[", u"R1C[2", u"R-1C", u"RC0",
          u"R[-6]C", u"RC[-8]", u"R12345678C1", u"XC1", u"RX1"})
        EXPECT_FALSE(ReadR1C1(text)) << ToUtf8(text);
}

TEST(cell_reference_edges, r1c1_is_written_as_it_is_read) {
    for (const char16_t* text : {u"RC", u"R[2]C[-1]", u"R3C4", u"R[-5]C", u"RC[10]", u"R1C", u"RC1"})
        EXPECT_EQ(CellReferenceText(ReadR1C1(text)->reference, ReferenceStyle::r1c1, {5, 7}), text);
}

TEST(cell_reference_edges, positions_are_in_order_row_by_row) {
    EXPECT_TRUE((CellPosition{1, 9} < CellPosition{2, 0}));
    EXPECT_FALSE((CellPosition{2, 0} < CellPosition{1, 9}));
    EXPECT_TRUE((CellPosition{1, 1} < CellPosition{1, 2}));
    EXPECT_FALSE((CellPosition{1, 1} < CellPosition{1, 1}));
}

TEST(entry_type_edges, every_letter_of_the_narrow_family) {
    for (const char16_t c : std::u16string_view(u"ABCDEFGHIJKLMNOPR")) {
        const auto type = ReadEntryType(std::u16string(1, c), false);
        ASSERT_TRUE(type) << static_cast<char>(c);
        EXPECT_EQ(type->result, std::string(1, static_cast<char>(c)));
    }
    for (const char16_t c : std::u16string_view(u"QSTUVWXYZa1%@ "))
        EXPECT_FALSE(ReadEntryType(std::u16string(1, c), false)) << static_cast<char>(c);
}

TEST(entry_type_edges, letters_of_the_wide_family) {
    for (const char16_t* text : {u"Q", u"U", u"C%", u"D%", u"F%", u"G%", u"K%", u"O%"})
        EXPECT_TRUE(ReadEntryType(text, true)) << ToUtf8(text);
    for (const char16_t* text : {u"S", u"V", u"A%", u"B%", u"Q%", u"R%", u"U%", u"N%", u"%", u"%C", u"C%%"})
        EXPECT_FALSE(ReadEntryType(text, true)) << ToUtf8(text);
}

TEST(entry_type_edges, marks_are_not_types) {
    EXPECT_FALSE(ReadEntryType(u"", true));
    EXPECT_FALSE(ReadEntryType(u"#", true));
    EXPECT_FALSE(ReadEntryType(u"!$", true));
    const auto plain = ReadEntryType(u"AJ!", true);
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->Signature(), "AJ");
    EXPECT_FALSE(plain->is_macro);
    EXPECT_FALSE(plain->is_thread_safe);
    EXPECT_TRUE(ReadEntryType(u"A#", false)->is_macro);
    EXPECT_TRUE(ReadEntryType(u"A$", true)->is_thread_safe);
}

} // namespace
} // namespace metrify::host
