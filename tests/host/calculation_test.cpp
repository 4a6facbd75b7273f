// Cells that depend on cells, array formulas, and sheets.

#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

constexpr int kNotAvailable = 42;

bool EnterArray(Host& host, const Area& area, const char16_t* formula) {
    return Ask12(host, 32866, {formula, Reference{host.state().books.Active()->id(), {area}, false}}) ==
           Success(true);
}

TEST(cells, constants_are_numbers_booleans_errors_or_texts) {
    Host host(15);
    const struct {
        const char16_t* text;
        CellValue value;
    } rows[] = {{u"12", 12.0},
                {u" -1.5 ", -1.5},
                {u"true", true},
                {u"False", false},
                {u"#n/a", CellError{42}},
                {u"#NULL!", CellError{0}},
                {u"#DIV/0!", CellError{7}},
                {u"#VALUE!", CellError{15}},
                {u"#REF!", CellError{23}},
                {u"#NAME?", CellError{29}},
                {u"#NUM!", CellError{36}},
                {u"#N", u"#N"},
                {u"ft", u"ft"},
                {u"=", u"="},
                {u" ", u" "},
                {u"", CellValue()}};
    for (const auto& row : rows) {
        ASSERT_TRUE(host.Enter(u"B3", row.text));
        EXPECT_EQ(host.ValueOf(u"B3"), row.value);
    }
}

TEST(cells, a_chain_is_calculated_in_the_order_of_its_links) {
    Host host(15);
    host.Enter(u"A1", u"=A2+1");
    host.Enter(u"A2", u"=SUM(A3:B3)*2");
    host.Enter(u"B3", u"=A3+1");
    host.Enter(u"A3", u"5");
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(23.0));
    host.Enter(u"A3", u"");
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(3.0));
}

TEST(cells, formulas_are_kept_in_the_r1c1_style) {
    Host host(15);
    host.Enter(u"B2", u"=A1+$C$3");
    EXPECT_EQ(host.state().books.Active()->FormulaText({1, 1}), u"=R[-1]C[-1]+R3C3");
    host.Enter(u"B2", u"TRUE");
    EXPECT_EQ(host.state().books.Active()->FormulaText({1, 1}), u"TRUE");
    EXPECT_EQ(host.state().books.Active()->FormulaText({9, 9}), u"");
}

TEST(cells, an_invalid_formula_is_not_entered) {
    Host host(15);
    host.Enter(u"A1", u"7");
    EXPECT_FALSE(host.Enter(u"A1", u"=1+"));
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(7.0));
}

TEST(cells, sheets_are_as_large_as_in_their_release) {
    const struct {
        int release;
        const char16_t* last;
        const char16_t* below;
        const char16_t* beside;
    } rows[] = {{4, u"=IV16384", u"=A16385", u"=IW1"},        {7, u"=IV16384", u"=A16385", u"=IW1"},
                {8, u"=IV65536", u"=A65537", u"=IW1"},        {11, u"=IV65536", u"=A65537", u"=IW1"},
                {12, u"=XFD1048576", u"=A1048577", u"=XFE1"}, {16, u"=XFD1048576", u"=A1048577", u"=XFE1"}};
    for (const auto& row : rows) {
        Host host(row.release);
        EXPECT_EQ(host.Evaluate(row.last), CellValue()) << row.release;
        EXPECT_EQ(host.Evaluate(row.below), CellValue(CellError{29})) << row.release;
        EXPECT_EQ(host.Evaluate(row.beside), CellValue(CellError{29})) << row.release;
    }
}

TEST(array_formulas, have_one_value_for_each_cell) {
    Host host(15);
    ASSERT_TRUE(EnterArray(host, {1, 2, 1, 2}, u"={1,2;3,4}"));
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(1.0));
    EXPECT_EQ(host.ValueOf(u"C2"), CellValue(2.0));
    EXPECT_EQ(host.ValueOf(u"B3"), CellValue(3.0));
    EXPECT_EQ(host.ValueOf(u"C3"), CellValue(4.0));
}

TEST(array_formulas, repeat_a_single_row_column_or_value) {
    Host host(15);
    ASSERT_TRUE(EnterArray(host, {0, 2, 0, 2}, u"={1;2}"));
    EXPECT_EQ(host.ValueOf(u"C2"), CellValue(2.0));
    EXPECT_EQ(host.ValueOf(u"A3"), CellValue(CellError{kNotAvailable}));
    ASSERT_TRUE(EnterArray(host, {4, 5, 0, 2}, u"={1,2}"));
    EXPECT_EQ(host.ValueOf(u"B6"), CellValue(2.0));
    EXPECT_EQ(host.ValueOf(u"C5"), CellValue(CellError{kNotAvailable}));
    ASSERT_TRUE(EnterArray(host, {7, 8, 0, 1}, u"=5"));
    EXPECT_EQ(host.ValueOf(u"B9"), CellValue(5.0));
}

TEST(array_formulas, count_relative_references_from_their_first_cell) {
    Host host(15);
    host.Enter(u"A1", u"3");
    host.Enter(u"A2", u"4");
    ASSERT_TRUE(EnterArray(host, {0, 1, 1, 1}, u"=RC[-1]"));
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(3.0));
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(3.0));
}

TEST(array_formulas, are_replaced_as_a_whole_or_not_at_all) {
    Host host(15);
    ASSERT_TRUE(EnterArray(host, {1, 2, 1, 2}, u"={1,2;3,4}"));
    for (const Area& area :
         {Area{1, 1, 1, 1}, Area{2, 2, 2, 2}, Area{0, 1, 0, 2}, Area{1, 2, 2, 2}, Area{2, 3, 1, 2}})
        EXPECT_FALSE(EnterArray(host, area, u"=7"));
    EXPECT_TRUE(EnterArray(host, {0, 3, 0, 3}, u"=7"));
    EXPECT_TRUE(EnterArray(host, {5, 5, 0, 0}, u"=8"));
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(7.0));
}

TEST(array_formulas, of_a_constant_are_a_constant) {
    Host host(15);
    ASSERT_TRUE(EnterArray(host, {0, 0, 0, 1}, u"5"));
    EXPECT_EQ(Ask12(host, 185, {49.0, CellOf(host, 0, 0)}), Success(false));
    EXPECT_TRUE(host.Enter(u"A1", u"6"));
}

TEST(workbooks, are_named_by_their_number_and_the_last_one_is_active) {
    Workbooks books({65536, 256});
    int changes = 0;
    books.on_change = [&changes] { ++changes; };
    EXPECT_EQ(books.Active()->name(), u"Sheet1");
    EXPECT_EQ(books.Active()->id(), 1U);
    books.Open();
    EXPECT_EQ(books.Active()->name(), u"Sheet2");
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(books.Close());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(books.Active()->name(), u"Sheet1");
    books.Open();
    EXPECT_EQ(books.Active()->name(), u"Sheet3");
    EXPECT_EQ(books.count(), 2U);
}

TEST(workbooks, are_found_by_name_and_number) {
    Workbooks books({65536, 256});
    books.Open();
    EXPECT_EQ(books.Find(1U)->name(), u"Sheet1");
    EXPECT_EQ(books.Find(u"SHEET2")->id(), 2U);
    EXPECT_EQ(books.Find(3U), nullptr);
    EXPECT_EQ(books.Find(u"Sheet"), nullptr);
}

TEST(workbooks, each_has_an_active_cell) {
    Workbooks books({65536, 256});
    books.SelectCell(CellPosition{3, 4});
    books.Open();
    EXPECT_EQ(books.ActiveCell(), CellPosition{});
    books.Close();
    EXPECT_EQ(books.ActiveCell(), (CellPosition{3, 4}));
    books.Close();
    EXPECT_FALSE(books.Close());
    EXPECT_EQ(books.Active(), nullptr);
    EXPECT_FALSE(books.ActiveCell());
    books.SelectCell(CellPosition{1, 1});
    EXPECT_FALSE(books.ActiveCell());
}

} // namespace
} // namespace metrify::host
