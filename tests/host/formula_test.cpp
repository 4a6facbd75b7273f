// Formulas: their syntax and their values.

#include "host/sheet/utf8.h"
#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

CellValue Value(std::u16string_view formula) {
    Host host(15);
    return host.Evaluate(formula).value_or(u"no formula");
}

bool IsFormula(std::u16string_view formula) {
    Host host(15);
    return host.Evaluate(formula).has_value();
}

TEST(formula, numbers) {
    EXPECT_EQ(Value(u"=3.5"), CellValue(3.5));
    EXPECT_EQ(Value(u"=.5"), CellValue(0.5));
    EXPECT_EQ(Value(u"=1e3"), CellValue(1000.0));
    EXPECT_EQ(Value(u"=1.5E-2"), CellValue(0.015));
    EXPECT_EQ(Value(u"=50%"), CellValue(0.5));
}

TEST(formula, texts_hold_doubled_quotes) {
    EXPECT_EQ(Value(u"=\"a \"\"b\"\"\""), CellValue(u"a \"b\""));
}

TEST(formula, booleans_and_errors) {
    EXPECT_EQ(Value(u"=TRUE"), CellValue(true));
    EXPECT_EQ(Value(u"=false"), CellValue(false));
    EXPECT_EQ(Value(u"=#N/A"), CellValue(CellError{xlerrNA}));
    EXPECT_EQ(Value(u"=#div/0!"), CellValue(CellError{xlerrDiv0}));
}

TEST(formula, operators_in_their_order) {
    EXPECT_EQ(Value(u"=1+2*3"), CellValue(7.0));
    EXPECT_EQ(Value(u"=(1+2)*3"), CellValue(9.0));
    EXPECT_EQ(Value(u"=2*3^2"), CellValue(18.0));
    EXPECT_EQ(Value(u"=10-4-3"), CellValue(3.0));
    EXPECT_EQ(Value(u"=1&2+3"), CellValue(u"15"));
    EXPECT_EQ(Value(u"=1+1=2"), CellValue(true));
}

TEST(formula, a_sign_binds_closer_than_a_power) {
    EXPECT_EQ(Value(u"=-2^2"), CellValue(4.0));
    EXPECT_EQ(Value(u"=--2"), CellValue(2.0));
}

TEST(formula, comparisons_ignore_case) {
    EXPECT_EQ(Value(u"=\"ft\"=\"FT\""), CellValue(true));
    EXPECT_EQ(Value(u"=1<>2"), CellValue(true));
    EXPECT_EQ(Value(u"=2<=1"), CellValue(false));
    EXPECT_EQ(Value(u"=\"a\">9"), CellValue(true));
}

TEST(formula, errors_of_arithmetic) {
    EXPECT_EQ(Value(u"=1/0"), CellValue(CellError{xlerrDiv0}));
    EXPECT_EQ(Value(u"=0^0"), CellValue(CellError{xlerrNum}));
    EXPECT_EQ(Value(u"=1e308*10"), CellValue(CellError{xlerrNum}));
    EXPECT_EQ(Value(u"=1+\"ft\""), CellValue(CellError{xlerrValue}));
    EXPECT_EQ(Value(u"=1+#N/A"), CellValue(CellError{xlerrNA}));
}

TEST(formula, unknown_names_and_functions) {
    EXPECT_EQ(Value(u"=nothing"), CellValue(CellError{xlerrName}));
    EXPECT_EQ(Value(u"=nothing(1)"), CellValue(CellError{xlerrName}));
}

TEST(formula, arrays) {
    EXPECT_EQ(Value(u"={1,\"a\";-2,#N/A}"), CellValue(ArrayOf({{1.0, u"a"}, {-2.0, CellError{xlerrNA}}})));
    EXPECT_FALSE(IsFormula(u"={1,2;3}"));
}

TEST(formula, built_in_functions) {
    EXPECT_EQ(Value(u"=SUM(1,2,{3,4})"), CellValue(10.0));
    EXPECT_EQ(Value(u"=INDEX({1,2,3},2)"), CellValue(2.0));
    EXPECT_EQ(Value(u"=INDEX({1,2;3,4},2,1)"), CellValue(3.0));
    EXPECT_EQ(Value(u"=INDEX({1,2},3)"), CellValue(CellError{xlerrRef}));
    EXPECT_EQ(Value(u"=rept(\"ab\",2)"), CellValue(u"abab"));
    EXPECT_EQ(Value(u"=CHAR(10)"), CellValue(u"\n"));
    EXPECT_EQ(Value(u"=NA()"), CellValue(CellError{xlerrNA}));
    EXPECT_EQ(Value(u"=NA(1)"), CellValue(CellError{xlerrValue}));
}

TEST(formula, invalid_formulas) {
    for (const char16_t* text :
         {u"=", u"1", u"=1+", u"=(1", u"=1)", u"=\"a", u"=1 2", u"=f(1", u"=?", u"=A1:", u"={1"})
        EXPECT_FALSE(IsFormula(text)) << ToUtf8(text);
}

TEST(formula, too_deep_nesting_is_not_a_formula) {
    const auto nested = [](std::size_t depth) {
        return u"=" + std::u16string(depth, u'(') + u"1" + std::u16string(depth, u')');
    };
    EXPECT_EQ(Value(nested(64)), CellValue(1.0));
    EXPECT_FALSE(IsFormula(nested(100000)));
}

TEST(formula, cells_and_rectangles) {
    Host host(15);
    host.Enter(u"A1", u"1");
    host.Enter(u"A2", u"2");
    host.Enter(u"$B$1", u"4");
    EXPECT_EQ(host.Evaluate(u"=SUM(A1:B2)"), CellValue(7.0));
    EXPECT_EQ(host.Evaluate(u"=SUM(B2:A1)"), CellValue(7.0));
    EXPECT_EQ(host.Evaluate(u"=a2*B$1"), CellValue(8.0));
    EXPECT_EQ(host.Evaluate(u"=Sheet1!A2"), CellValue(2.0));
    EXPECT_EQ(host.Evaluate(u"='Sheet1'!A2"), CellValue(2.0));
    EXPECT_EQ(host.Evaluate(u"=Sheet9!A2"), CellValue(CellError{xlerrRef}));
}

TEST(formula, the_size_of_a_sheet_depends_on_the_host) {
    Host narrow(11);
    EXPECT_TRUE(narrow.Evaluate(u"=IV65536").has_value());
    EXPECT_EQ(narrow.Evaluate(u"=IW1"), CellValue(CellError{xlerrName}));
    Host wide(12);
    EXPECT_EQ(wide.Evaluate(u"=XFD1048576"), CellValue());
    EXPECT_EQ(wide.Evaluate(u"=XFE1"), CellValue(CellError{xlerrName}));
}

TEST(calculation, a_formula_follows_what_it_refers_to) {
    Host host(15);
    host.Enter(u"C1", u"=B1+1");
    host.Enter(u"B1", u"=A1*2");
    host.Enter(u"A1", u"5");
    EXPECT_EQ(host.ValueOf(u"C1"), CellValue(11.0));
    host.Enter(u"A1", u"6");
    EXPECT_EQ(host.ValueOf(u"C1"), CellValue(13.0));
}

TEST(calculation, a_circular_reference_ends) {
    Host host(15);
    host.Enter(u"A1", u"=B1+1");
    EXPECT_TRUE(host.Enter(u"B1", u"=A1+1"));
    EXPECT_TRUE(host.ValueOf(u"B1").Is<double>());
}

TEST(calculation, a_cell_is_emptied_by_the_empty_text) {
    Host host(15);
    host.Enter(u"A1", u"5");
    host.Enter(u"A1", u"");
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue());
}

TEST(calculation, a_formula_with_the_value_of_an_empty_cell_shows_0) {
    Host host(15);
    host.Enter(u"A1", u"=B1");
    EXPECT_EQ(host.ValueOf(u"A1"), CellValue(0.0));
}

TEST(calculation, a_text_that_is_not_a_cell_cannot_be_entered_into) {
    Host host(15);
    EXPECT_FALSE(host.Enter(u"A", u"5"));
    EXPECT_FALSE(host.Enter(u"A1:B2", u"5"));
}

} // namespace
} // namespace metrify::host
