#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

const CellValue value_error = CellError{xlerrValue};

TEST(xlfActiveCell, is_a_reference_to_the_first_cell_at_first) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfActiveCell), Success(CellOf(host, 0, 0)));
}

TEST(xlfActiveCell, follows_the_selection) {
    Host host(11);
    host.state().books.SelectCell(CellPosition{6, 2});
    EXPECT_EQ(Ask4(host, xlfActiveCell), Success(CellOf(host, 6, 2)));
}

TEST(xlfActiveCell, is_not_available_without_a_cell) {
    Host host(15);
    host.state().books.SelectCell(std::nullopt);
    EXPECT_EQ(Ask12(host, xlfActiveCell), Success(CellError{xlerrNA}));
    host.state().books.Close();
    EXPECT_EQ(Ask12(host, xlfActiveCell), Success(CellError{xlerrNA}));
}

TEST(xlfGetFormula, is_in_the_r1c1_style) {
    Host host(15);
    host.Enter(u"B2", u"=A1+$C$3");
    EXPECT_EQ(Ask12(host, xlfGetFormula, {CellOf(host, 1, 1)}), Success(u"=R[-1]C[-1]+R3C3"));
}

TEST(xlfGetFormula, of_a_constant_is_its_text) {
    Host host(15);
    host.Enter(u"A1", u"0.10");
    host.Enter(u"A2", u"#N/A");
    EXPECT_EQ(Ask12(host, xlfGetFormula, {CellOf(host, 0, 0)}), Success(u"0.1"));
    EXPECT_EQ(Ask12(host, xlfGetFormula, {CellOf(host, 1, 0)}), Success(u"#N/A"));
}

TEST(xlfGetFormula, of_an_empty_cell_is_empty) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetFormula, {CellOf(host, 0, 0)}), Success(u""));
}

TEST(xlfGetFormula, of_a_value_that_is_not_a_reference_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetFormula, {1.0}), Success(value_error));
    EXPECT_EQ(Ask12(host, xlfGetFormula, {Reference{99, {{0, 0, 0, 0}}, false}}), Success(value_error));
}

TEST(xlfGetCell, item_49_is_whether_the_cell_is_part_of_an_array) {
    Host host(15);
    const Reference area{host.state().books.Active()->id(), {{0, 0, 0, 1}}, false};
    Ask12(host, xlcFormulaArray, {u"={1,2}", area});
    EXPECT_EQ(Ask12(host, xlfGetCell, {49.0, CellOf(host, 0, 1)}), Success(true));
    EXPECT_EQ(Ask12(host, xlfGetCell, {49.0, CellOf(host, 0, 2)}), Success(false));
}

TEST(xlfGetCell, gives_row_column_contents_and_formula) {
    Host host(15);
    host.Enter(u"C5", u"=1+1");
    const Reference cell = CellOf(host, 4, 2);
    EXPECT_EQ(Ask12(host, xlfGetCell, {2.0, cell}), Success(5.0));
    EXPECT_EQ(Ask12(host, xlfGetCell, {3.0, cell}), Success(3.0));
    EXPECT_EQ(Ask12(host, xlfGetCell, {5.0, cell}), Success(2.0));
    EXPECT_EQ(Ask12(host, xlfGetCell, {6.0, cell}), Success(u"=1+1"));
    EXPECT_EQ(Ask12(host, xlfGetCell, {48.0, cell}), Success(true));
}

TEST(xlfGetCell, without_a_reference_means_the_active_cell) {
    Host host(15);
    host.state().books.SelectCell(CellPosition{3, 0});
    EXPECT_EQ(Ask12(host, xlfGetCell, {2.0}), Success(4.0));
}

TEST(xlfGetCell, an_unknown_item_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetCell, {4.0, CellOf(host, 0, 0)}), Success(value_error));
    EXPECT_EQ(Ask12(host, xlfGetCell, {500.0, CellOf(host, 0, 0)}), Success(value_error));
}

TEST(xlfFormulaConvert, from_a1_to_r1c1_counts_from_the_reference) {
    Host host(15);
    const CellValue missing = MissingArgument{};
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=A1+$C$3", true, false, missing, CellOf(host, 1, 1)}),
              Success(u"=R[-1]C[-1]+R3C3"));
}

TEST(xlfFormulaConvert, from_r1c1_to_a1) {
    Host host(15);
    const CellValue missing = MissingArgument{};
    EXPECT_EQ(Ask12(host, xlfFormulaConvert,
                    {u"=Metrify(RC[-1],\"R1C1\")", false, true, missing, CellOf(host, 0, 1)}),
              Success(u"=Metrify(A1,\"R1C1\")"));
}

TEST(xlfFormulaConvert, makes_references_absolute_or_relative) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=A1", true, true, 1.0}), Success(u"=$A$1"));
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=A1", true, true, 2.0}), Success(u"=A$1"));
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=A1", true, true, 3.0}), Success(u"=$A1"));
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=$A$1", true, true, 4.0}), Success(u"=A1"));
}

TEST(xlfFormulaConvert, an_invalid_formula_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=1+", true, false}), Success(value_error));
    EXPECT_EQ(Ask12(host, xlfFormulaConvert, {u"=A1", u"maybe", false}), Success(value_error));
}

TEST(xlcFormula, enters_a_formula_in_the_r1c1_style) {
    Host host(15);
    host.Enter(u"A1", u"3");
    EXPECT_EQ(Ask12(host, xlcFormula, {u"=RC[-1]*2", CellOf(host, 0, 1)}), Success(true));
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(6.0));
}

TEST(xlcFormula, enters_a_constant) {
    Host host(15);
    Ask12(host, xlcFormula, {u"12", CellOf(host, 0, 0)});
    Ask12(host, xlcFormula, {u"true", CellOf(host, 0, 1)});
    Ask12(host, xlcFormula, {u"ft", CellOf(host, 0, 2)});
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(12.0));
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(true));
    EXPECT_EQ(host.ValueOf(u"C1"), CellValue(u"ft"));
}

TEST(xlcFormula, without_a_reference_means_the_active_cell) {
    Host host(15);
    host.state().books.SelectCell(CellPosition{1, 1});
    Ask12(host, xlcFormula, {u"7"});
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(7.0));
}

TEST(xlcFormula, fills_every_cell_of_an_area) {
    Host host(15);
    host.Enter(u"A1", u"1");
    host.Enter(u"A2", u"2");
    const Reference area{host.state().books.Active()->id(), {{0, 1, 1, 1}}, false};
    Ask12(host, xlcFormula, {u"=RC[-1]+10", area});
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(11.0));
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(12.0));
}

TEST(xlcFormula, fails_on_an_invalid_formula) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlcFormula, {u"=1+", CellOf(host, 0, 0)}), Refusal(xlretFailed));
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue());
}

TEST(xlcFormula, fails_on_a_part_of_an_array) {
    Host host(15);
    const Reference area{host.state().books.Active()->id(), {{0, 0, 0, 1}}, false};
    Ask12(host, xlcFormulaArray, {u"={1,2}", area});
    EXPECT_EQ(Ask12(host, xlcFormula, {u"7", CellOf(host, 0, 0)}), Refusal(xlretFailed));
    EXPECT_EQ(Ask12(host, xlcFormula, {u"7", area}), Success(true));
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(7.0));
}

TEST(xlcFormula, fails_without_a_workbook) {
    Host host(15);
    host.state().books.Close();
    EXPECT_EQ(Ask12(host, xlcFormula, {u"7"}), Refusal(xlretFailed));
}

TEST(xlcFormulaArray, spreads_its_result_over_the_area) {
    Host host(15);
    const Reference area{host.state().books.Active()->id(), {{0, 1, 0, 2}}, false};
    EXPECT_EQ(Ask12(host, xlcFormulaArray, {u"={1,2}", area}), Success(true));
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(1.0));
    EXPECT_EQ(host.ValueOf(u"B1"), CellValue(2.0));
    EXPECT_EQ(host.ValueOf(u"C1"), CellValue(CellError{xlerrNA}));
    // A single row is repeated.
    EXPECT_EQ(host.ValueOf(u"B2"), CellValue(2.0));
}

} // namespace
} // namespace metrify::host
