// Conversion between kinds of values.

#include "host/sheet/coercion.h"
#include "host/sheet/utf8.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

const CellValue value_error = CellError{15};
const CellValue missing = MissingArgument{};
const CellValue reference = Reference{1, {{0, 0, 0, 0}}, true};

TEST(coercion, of_an_array_the_first_cell_counts) {
    EXPECT_EQ(FirstCell(ArrayOf({{1.0, 2.0}, {3.0, 4.0}})), CellValue(1.0));
    EXPECT_EQ(FirstCell(CellArray{}), value_error);
    EXPECT_EQ(FirstCell(u"a"), CellValue(u"a"));
    EXPECT_EQ(ToNumberValue(RowOf({u"5", 6.0})), CellValue(5.0));
    EXPECT_EQ(ToTextValue(RowOf({5.0, 6.0})), CellValue(u"5"));
    EXPECT_EQ(ToBoolValue(RowOf({0.0, 6.0})), CellValue(false));
    EXPECT_EQ(ToIntegerValue(RowOf({5.5, 6.0}), 0, 9), CellValue(5));
}

TEST(coercion, numbers_come_from_every_scalar) {
    EXPECT_EQ(ToNumberValue(2.5), CellValue(2.5));
    EXPECT_EQ(ToNumberValue(-7), CellValue(-7.0));
    EXPECT_EQ(ToNumberValue(true), CellValue(1.0));
    EXPECT_EQ(ToNumberValue(false), CellValue(0.0));
    EXPECT_EQ(ToNumberValue(CellValue()), CellValue(0.0));
    EXPECT_EQ(ToNumberValue(CellError{7}), CellValue(CellError{7}));
    EXPECT_EQ(ToNumberValue(missing), value_error);
    EXPECT_EQ(ToNumberValue(reference), value_error);
}

TEST(coercion, a_text_is_a_number_as_a_whole_or_not_at_all) {
    EXPECT_EQ(ToNumberValue(u" +12.5  "), CellValue(12.5));
    EXPECT_EQ(ToNumberValue(u"-1e3"), CellValue(-1000.0));
    EXPECT_EQ(ToNumberValue(u"7"), CellValue(7.0));
    for (const char16_t* text :
         {u"", u"  ", u"12a", u"a12", u"1 2", u"0x10", u"1e400", u"inf", u"nan", u"5\u00B5"})
        EXPECT_EQ(ToNumberValue(text), value_error) << ToUtf8(text);
}

TEST(coercion, texts_come_from_every_scalar) {
    EXPECT_EQ(ToTextValue(u"a"), CellValue(u"a"));
    EXPECT_EQ(ToTextValue(-7), CellValue(u"-7"));
    EXPECT_EQ(ToTextValue(0.1), CellValue(u"0.1"));
    EXPECT_EQ(ToTextValue(true), CellValue(u"TRUE"));
    EXPECT_EQ(ToTextValue(false), CellValue(u"FALSE"));
    EXPECT_EQ(ToTextValue(CellValue()), CellValue(u""));
    EXPECT_EQ(ToTextValue(CellError{7}), CellValue(CellError{7}));
    EXPECT_EQ(ToTextValue(missing), value_error);
    EXPECT_EQ(ToTextValue(reference), value_error);
}

TEST(coercion, whole_numbers_have_all_their_digits_below_ten_to_the_15th) {
    EXPECT_EQ(NumberText(999999999999999.0), u"999999999999999");
    EXPECT_EQ(NumberText(-100000000000000.0), u"-100000000000000");
    EXPECT_EQ(NumberText(1e15), u"1e+15");
    EXPECT_EQ(NumberText(100000.0), u"100000");
    EXPECT_EQ(NumberText(1.5), u"1.5");
}

TEST(coercion, booleans_come_from_their_words_and_from_numbers) {
    EXPECT_EQ(ToBoolValue(u"True"), CellValue(true));
    EXPECT_EQ(ToBoolValue(u"FALSE"), CellValue(false));
    EXPECT_EQ(ToBoolValue(u"1"), value_error);
    EXPECT_EQ(ToBoolValue(u""), value_error);
    EXPECT_EQ(ToBoolValue(true), CellValue(true));
    EXPECT_EQ(ToBoolValue(0.5), CellValue(true));
    EXPECT_EQ(ToBoolValue(1.0), CellValue(true));
    EXPECT_EQ(ToBoolValue(0.0), CellValue(false));
    EXPECT_EQ(ToBoolValue(3), CellValue(true));
    EXPECT_EQ(ToBoolValue(CellValue()), CellValue(false));
    EXPECT_EQ(ToBoolValue(CellError{7}), CellValue(CellError{7}));
    EXPECT_EQ(ToBoolValue(missing), value_error);
}

TEST(coercion, integers_are_truncated_and_checked_against_their_bounds) {
    EXPECT_EQ(ToIntegerValue(1.9, -5, 5), CellValue(1));
    EXPECT_EQ(ToIntegerValue(-1.9, -5, 5), CellValue(-1));
    EXPECT_EQ(ToIntegerValue(u"3.7", -5, 5), CellValue(3));
    EXPECT_EQ(ToIntegerValue(5.9, -5, 5), CellValue(5));
    EXPECT_EQ(ToIntegerValue(-5.9, -5, 5), CellValue(-5));
    EXPECT_EQ(ToIntegerValue(6.0, -5, 5), value_error);
    EXPECT_EQ(ToIntegerValue(-6.0, -5, 5), value_error);
    EXPECT_EQ(ToIntegerValue(CellError{7}, -5, 5), CellValue(CellError{7}));
    EXPECT_EQ(ToIntegerValue(u"x", -5, 5), value_error);
}

TEST(cell_value, only_the_case_of_ascii_letters_is_ignored) {
    EXPECT_TRUE(EqualIgnoringCase(u"azAZ09", u"AZaz09"));
    EXPECT_FALSE(EqualIgnoringCase(u"@", u"`"));
    EXPECT_FALSE(EqualIgnoringCase(u"[", u"{"));
    EXPECT_FALSE(EqualIgnoringCase(u"\u00C4", u"\u00E4"));
    EXPECT_FALSE(EqualIgnoringCase(u"a", u"ab"));
    EXPECT_FALSE(EqualIgnoringCase(u"ab", u"a"));
    EXPECT_FALSE(EqualIgnoringCase(u"a", u"b"));
}

TEST(cell_value, every_kind_has_the_type_code_of_its_record) {
    EXPECT_EQ(TypeCodeOf(1.0), 0x0001);
    EXPECT_EQ(TypeCodeOf(u"a"), 0x0002);
    EXPECT_EQ(TypeCodeOf(true), 0x0004);
    EXPECT_EQ(TypeCodeOf(Reference{1, {{0, 0, 0, 0}}, false}), 0x0008);
    EXPECT_EQ(TypeCodeOf(CellError{7}), 0x0010);
    EXPECT_EQ(TypeCodeOf(RowOf({1.0})), 0x0040);
    EXPECT_EQ(TypeCodeOf(missing), 0x0080);
    EXPECT_EQ(TypeCodeOf(CellValue()), 0x0100);
    EXPECT_EQ(TypeCodeOf(reference), 0x0400);
    EXPECT_EQ(TypeCodeOf(1), 0x0800);
}

TEST(cell_value, an_unknown_error_shows_as_not_available) {
    EXPECT_EQ(ErrorText({1}), u"#N/A");
}

TEST(cell_value, arrays_are_equal_with_the_same_shape_and_cells) {
    const CellArray row = RowOf({1.0, 2.0});
    EXPECT_EQ(row.rows, 1);
    EXPECT_EQ(row.columns, 2);
    EXPECT_EQ(row, RowOf({1.0, 2.0}));
    EXPECT_NE(row, ArrayOf({{1.0}, {2.0}}));
    EXPECT_NE(row, RowOf({1.0, 3.0}));
    EXPECT_EQ(ArrayOf({}).rows, 0);
    EXPECT_EQ(ArrayOf({}).columns, 0);
    EXPECT_EQ(ArrayOf({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}).At(2, 1), CellValue(6.0));
    EXPECT_EQ(ArrayOf({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}).At(1, 0), CellValue(3.0));
}

} // namespace
} // namespace metrify::host
