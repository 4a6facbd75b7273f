// UTF-8, values as lines, references, type texts.

#include "host/sheet/cell_reference.h"
#include "host/sheet/utf8.h"
#include "host/sheet/value_text.h"
#include "host/state/entry_type.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

TEST(utf8, characters_of_every_length_are_converted_both_ways) {
    const std::string bytes = "m \xC2\xB5 \xE2\x84\xA6 \xF0\x9F\x93\x8F";
    EXPECT_EQ(FromUtf8(bytes), u"m \u00B5 \u2126 \U0001F4CF");
    EXPECT_EQ(ToUtf8(FromUtf8(bytes)), bytes);
}

TEST(utf8, invalid_bytes_are_replaced) {
    EXPECT_EQ(FromUtf8("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(FromUtf8("a\xC2"), u"a\uFFFD");
    EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD");
    EXPECT_EQ(FromUtf8("\xF7\xBF\xBF\xBF"), u"\uFFFD");
}

TEST(utf8, an_unpaired_surrogate_is_replaced) {
    EXPECT_EQ(ToUtf8(std::u16string{u'a', char16_t{0xD800}, u'z'}), "a\xEF\xBF\xBDz");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDC00}}), "\xEF\xBF\xBD");
}

TEST(value_text, a_single_value_is_a_line) {
    EXPECT_EQ(RowsText(3.5), "3.5\n");
}

TEST(value_text, rows_are_lines_and_cells_are_separated_by_tabs) {
    EXPECT_EQ(RowsText(ArrayOf({{1.0668, u"m\n\n"}, {true, CellError{xlerrValue}}})),
              "1.0668\t\"m\\n\\n\"\nTRUE\t#VALUE!\n");
}

TEST(value_text, numbers_are_in_the_shortest_form_that_reads_back_equal) {
    EXPECT_EQ(RowsText(0.1), "0.1\n");
    EXPECT_EQ(RowsText(100.0), "100\n");
    EXPECT_EQ(RowsText(1e300), "1e+300\n");
    EXPECT_EQ(RowsText(1.0 / 3.0), "0.3333333333333333\n");
    EXPECT_EQ(RowsText(-0.0), "-0\n");
}

TEST(value_text, texts_have_the_escapes_of_c) {
    EXPECT_EQ(RowsText(u"\a\b\t\n\v\f\r\"\\"), "\"\\a\\b\\t\\n\\v\\f\\r\\\"\\\\\"\n");
    EXPECT_EQ(RowsText(u"\u0001"
                       u"7\u007F"),
              "\"\\0017\\177\"\n");
    EXPECT_EQ(RowsText(u"\u00B5m"), "\"\xC2\xB5m\"\n");
}

TEST(value_text, an_empty_text_has_its_quotes_and_an_empty_cell_nothing) {
    EXPECT_EQ(RowsText(RowOf({u"", CellValue(), 1.0})), "\"\"\t\t1\n");
}

TEST(value_text, every_error_has_its_text) {
    EXPECT_EQ(RowsText(RowOf({CellError{0}, CellError{7}, CellError{15}, CellError{23}, CellError{29},
                              CellError{36}, CellError{42}})),
              "#NULL!\t#DIV/0!\t#VALUE!\t#REF!\t#NAME?\t#NUM!\t#N/A\n");
}

constexpr SheetSize wide_sheet{1048576, 16384};

TEST(cell_reference, a1_letters_are_a_number_of_base_26) {
    EXPECT_EQ(CellReferenceText({{0, 25}, false, false}, ReferenceStyle::a1, {}), u"Z1");
    EXPECT_EQ(CellReferenceText({{0, 26}, false, false}, ReferenceStyle::a1, {}), u"AA1");
    EXPECT_EQ(CellReferenceText({{1048575, 16383}, true, true}, ReferenceStyle::a1, {}), u"$XFD$1048576");
}

TEST(cell_reference, a1_reads_what_it_writes) {
    const auto read = ReadCellReference(u"$XFD1048576", ReferenceStyle::a1, {}, wide_sheet);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reference.at, (CellPosition{1048575, 16383}));
    EXPECT_TRUE(read->reference.column_is_absolute);
    EXPECT_FALSE(read->reference.row_is_absolute);
    EXPECT_EQ(read->length, 11U);
}

TEST(cell_reference, r1c1_counts_relative_parts_from_the_base) {
    const auto read = ReadCellReference(u"R[-1]C3+1", ReferenceStyle::r1c1, {5, 5}, wide_sheet);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reference.at, (CellPosition{4, 2}));
    EXPECT_EQ(read->length, 7U);
    EXPECT_EQ(CellReferenceText(read->reference, ReferenceStyle::r1c1, {5, 5}), u"R[-1]C3");
    EXPECT_EQ(CellReferenceText({{5, 5}, false, false}, ReferenceStyle::r1c1, {5, 5}), u"RC");
}

TEST(cell_reference, a_cell_outside_the_sheet_is_not_a_reference) {
    EXPECT_FALSE(ReadCellReference(u"A0", ReferenceStyle::a1, {}, wide_sheet));
    EXPECT_FALSE(ReadCellReference(u"A1048577", ReferenceStyle::a1, {}, wide_sheet));
    EXPECT_FALSE(ReadCellReference(u"R[-1]C", ReferenceStyle::r1c1, {0, 0}, wide_sheet));
    EXPECT_FALSE(ReadCellReference(u"R0C1", ReferenceStyle::r1c1, {0, 0}, wide_sheet));
}

TEST(cell_reference, the_beginning_of_a_name_is_not_a_reference) {
    EXPECT_FALSE(ReadCellReference(u"A1x", ReferenceStyle::a1, {}, wide_sheet));
    EXPECT_FALSE(ReadCellReference(u"LOG10(2)", ReferenceStyle::a1, {}, wide_sheet));
    EXPECT_FALSE(ReadCellReference(u"RC_1", ReferenceStyle::r1c1, {}, wide_sheet));
}

TEST(entry_type, the_first_letter_is_the_result_and_the_others_are_parameters) {
    const auto type = ReadEntryType(u"UBC%C%$", true);
    ASSERT_TRUE(type);
    EXPECT_EQ(type->result, "U");
    EXPECT_EQ(type->parameters, (std::vector<std::string>{"B", "C%", "C%"}));
    EXPECT_TRUE(type->is_thread_safe);
    EXPECT_EQ(type->Signature(), "UBC%C%");
}

TEST(entry_type, a_function_with_the_rights_of_a_macro_is_not_thread_safe) {
    const auto type = ReadEntryType(u"UU$#", true);
    ASSERT_TRUE(type);
    EXPECT_TRUE(type->is_macro);
    EXPECT_FALSE(type->is_thread_safe);
}

TEST(entry_type, hosts_before_version_12_refuse_wide_letters) {
    EXPECT_TRUE(ReadEntryType(u"RBCC", false));
    EXPECT_FALSE(ReadEntryType(u"UBCC", false));
    EXPECT_FALSE(ReadEntryType(u"RBC%C%", false));
    EXPECT_FALSE(ReadEntryType(u"RBCC$", false));
}

} // namespace
} // namespace metrify::host
