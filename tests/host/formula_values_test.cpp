// Values of formulas.

#include "host/sheet/utf8.h"
#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

constexpr int kDiv0 = 7;
constexpr int kValue = 15;
constexpr int kRef = 23;
constexpr int kName = 29;
constexpr int kNum = 36;
constexpr int kNotAvailable = 42;

struct Row {
    const char16_t* formula;
    CellValue value;
};

void ExpectValues(const std::vector<Row>& rows) {
    Host host(15);
    for (const Row& row : rows)
        EXPECT_EQ(host.Evaluate(row.formula), row.value) << ToUtf8(row.formula);
}

TEST(formula_values, sums_convert_their_arguments_to_numbers) {
    ExpectValues({{u"=SUM(1)", 1.0},
                  {u"=SUM(\"3\",TRUE,1.5)", 5.5},
                  {u"=SUM(\"a\")", CellError{kValue}},
                  {u"=SUM({1,2;3,4},10)", 20.0},
                  {u"=SUM(1e308,1e308)", CellError{kNum}},
                  {u"=SUM(-1e308,1e308)", 0.0}});
}

TEST(formula_values, sums_skip_texts_in_an_array_but_not_errors) {
    ExpectValues({{u"=SUM({1,\"5\",\"a\"})", 1.0},
                  {u"=SUM({1,#REF!})", CellError{kRef}},
                  {u"=SUM(1,#DIV/0!)", CellError{kDiv0}}});
}

TEST(formula_values, the_hosts_functions_take_so_many_arguments) {
    const auto sum_of = [](std::size_t count) {
        std::u16string formula = u"=SUM(1";
        for (std::size_t i = 1; i < count; ++i)
            formula += u",1";
        return formula + u")";
    };
    Host host(15);
    EXPECT_EQ(host.Evaluate(sum_of(30)), CellValue(30.0));
    EXPECT_EQ(host.Evaluate(sum_of(31)), CellValue(CellError{kValue}));
    ExpectValues({{u"=SUM()", CellError{kValue}},
                  {u"=INDEX({1,2})", CellError{kValue}},
                  {u"=INDEX({1,2},1,1,1)", CellError{kValue}},
                  {u"=REPT(\"a\")", CellError{kValue}},
                  {u"=REPT(\"a\",1,1)", CellError{kValue}},
                  {u"=CHAR()", CellError{kValue}},
                  {u"=CHAR(65,65)", CellError{kValue}},
                  {u"=NA()", CellError{kNotAvailable}}});
}

TEST(formula_values, a_cell_of_an_array_has_row_and_column) {
    ExpectValues({{u"=INDEX({1,2;3,4},1,2)", 2.0},
                  {u"=INDEX({1,2;3,4},2,1)", 3.0},
                  {u"=INDEX({1,2;3,4},2,2)", 4.0},
                  {u"=INDEX({1,2;3,4},3,1)", CellError{kRef}},
                  {u"=INDEX({1,2;3,4},1,3)", CellError{kRef}},
                  {u"=INDEX({1,2;3,4},0,1)", CellError{kValue}},
                  {u"=INDEX({1,2;3,4},1,0)", CellError{kValue}},
                  {u"=INDEX({1,2;3,4},\"a\",1)", CellError{kValue}},
                  {u"=INDEX({1,2;3,4},1,\"a\")", CellError{kValue}},
                  {u"=INDEX(7,1)", 7.0},
                  {u"=INDEX(7,2)", CellError{kRef}}});
}

TEST(formula_values, a_single_index_selects_a_cell_of_a_vector) {
    ExpectValues({{u"=INDEX({1,2,3},3)", 3.0},
                  {u"=INDEX({1;2;3},3)", 3.0},
                  {u"=INDEX({1;2;3},4)", CellError{kRef}},
                  {u"=INDEX({1,2;3,4},2)", 3.0},
                  {u"=INDEX({1,2,3},1,3)", 3.0}});
}

TEST(formula_values, a_text_is_repeated_up_to_the_longest_text) {
    ExpectValues({{u"=REPT(\"ab\",3)", u"ababab"},
                  {u"=REPT(\"ab\",0)", u""},
                  {u"=REPT(\"ab\",2.9)", u"abab"},
                  {u"=REPT(7,2)", u"77"},
                  {u"=REPT(\"ab\",-1)", CellError{kValue}},
                  {u"=REPT(\"ab\",\"x\")", CellError{kValue}},
                  {u"=REPT(#REF!,2)", CellError{kValue}},
                  {u"=REPT(\"a\",32767)", std::u16string(32767, u'a')},
                  {u"=REPT(\"a\",32768)", CellError{kValue}},
                  {u"=REPT(\"aa\",16384)", CellError{kValue}}});
}

TEST(formula_values, characters_have_the_codes_1_to_255) {
    ExpectValues({{u"=CHAR(1)", u"\x01"},
                  {u"=CHAR(65)", u"A"},
                  {u"=CHAR(255)", u"\u00FF"},
                  {u"=CHAR(0)", CellError{kValue}},
                  {u"=CHAR(256)", CellError{kValue}},
                  {u"=CHAR(#DIV/0!)", CellError{kDiv0}}});
}

TEST(formula_values, every_operator) {
    ExpectValues({{u"=7+2", 9.0},
                  {u"=7-2", 5.0},
                  {u"=7*2", 14.0},
                  {u"=7/2", 3.5},
                  {u"=7^2", 49.0},
                  {u"=7&2", u"72"},
                  {u"=+7", 7.0},
                  {u"=-7", -7.0},
                  {u"=7%", 0.07},
                  {u"=50%%", 0.005},
                  {u"=2^-1", 0.5},
                  {u"=2*-3", -6.0},
                  {u"=-+-+2", 2.0},
                  {u"=---2", -2.0},
                  {u"=0^2", 0.0},
                  {u"=2^0", 1.0},
                  {u"=2^3^2", 64.0},
                  {u"=8/4/2", 1.0},
                  {u"=2+3&4*5", u"520"}});
}

TEST(formula_values, comparisons_of_numbers) {
    struct {
        const char16_t* symbol;
        bool less, equal, greater;
    } const rows[] = {{u"=", false, true, false}, {u"<>", true, false, true}, {u"<", true, false, false},
                      {u">", false, false, true}, {u"<=", true, true, false}, {u">=", false, true, true}};
    Host host(15);
    for (const auto& row : rows) {
        const std::u16string symbol = row.symbol;
        EXPECT_EQ(host.Evaluate(u"=1" + symbol + u"2"), CellValue(row.less)) << ToUtf8(symbol);
        EXPECT_EQ(host.Evaluate(u"=2" + symbol + u"2"), CellValue(row.equal)) << ToUtf8(symbol);
        EXPECT_EQ(host.Evaluate(u"=3" + symbol + u"2"), CellValue(row.greater)) << ToUtf8(symbol);
    }
}

TEST(formula_values, numbers_sort_before_texts_and_texts_before_booleans) {
    ExpectValues({{u"=9<\"1\"", true},
                  {u"=\"1\"<9", false},
                  {u"=\"z\"<FALSE", true},
                  {u"=9<FALSE", true},
                  {u"=TRUE>\"z\"", true},
                  {u"=1=TRUE", false},
                  {u"=FALSE<TRUE", true},
                  {u"=TRUE=TRUE", true},
                  {u"=\"a\"<\"b\"", true},
                  {u"=\"b\"<\"a\"", false},
                  {u"=\"a\"<=\"A\"", true},
                  {u"=\"a\"<>\"A\"", false},
                  {u"=\"a\"<\"aa\"", true}});
}

TEST(formula_values, an_empty_cell_is_compared_as_the_kind_of_the_other_operand) {
    ExpectValues({{u"=A1=0", true},
                  {u"=0=A1", true},
                  {u"=A1=\"\"", true},
                  {u"=\"\"=A1", true},
                  {u"=A1<\"a\"", true},
                  {u"=\"a\">A1", true},
                  {u"=A1=FALSE", true},
                  {u"=A1<TRUE", true},
                  {u"=A1=A2", true},
                  {u"=A1<1", true},
                  {u"=A1&\"x\"", u"x"},
                  {u"=A1+1", 1.0}});
}

TEST(formula_values, operands_are_converted_for_their_operator) {
    ExpectValues({{u"=\"3\"+\"4\"", 7.0},
                  {u"=TRUE+1", 2.0},
                  {u"=-\"3\"", -3.0},
                  {u"=-TRUE", -1.0},
                  {u"=+\"a\"", u"a"},
                  {u"=-\"a\"", CellError{kValue}},
                  {u"=\"50\"%", 0.5},
                  {u"=\"a\"%", CellError{kValue}},
                  {u"=1&TRUE", u"1TRUE"},
                  {u"=\"a\"*2", CellError{kValue}},
                  {u"=2*\"a\"", CellError{kValue}},
                  {u"={1,2}+{10,20}", 11.0},
                  {u"=-{3,4}", -3.0}});
}

TEST(formula_values, the_error_of_the_left_operand_is_given) {
    ExpectValues({{u"=#N/A+#DIV/0!", CellError{kNotAvailable}},
                  {u"=#DIV/0!&#N/A", CellError{kDiv0}},
                  {u"=1=#REF!", CellError{kRef}},
                  {u"=#REF!=1", CellError{kRef}},
                  {u"=-#NUM!", CellError{kNum}},
                  {u"=\"a\"+#NUM!", CellError{kNum}}});
}

TEST(formula_values, results_that_are_not_finite_are_errors) {
    ExpectValues({{u"=0/0", CellError{kDiv0}},
                  {u"=5/0", CellError{kDiv0}},
                  {u"=0/5", 0.0},
                  {u"=(-8)^0.5", CellError{kNum}},
                  {u"=0^0", CellError{kNum}},
                  {u"=0^-1", CellError{kNum}},
                  {u"=1e308+1e308", CellError{kNum}},
                  {u"=-1e308-1e308", CellError{kNum}},
                  {u"=1e200*1e200", CellError{kNum}},
                  {u"=1e200/1e-200", CellError{kNum}}});
}

TEST(formula_values, errors_are_read_in_any_case) {
    ExpectValues({{u"=#null!", CellError{0}},
                  {u"=#Div/0!", CellError{7}},
                  {u"=#VALUE!", CellError{15}},
                  {u"=#ref!", CellError{23}},
                  {u"=#NAME?", CellError{29}},
                  {u"=#num!", CellError{36}},
                  {u"=#n/a", CellError{42}}});
}

TEST(formula_values, numbers_have_digits_a_point_and_a_power_of_ten) {
    ExpectValues({{u"=12", 12.0},
                  {u"=0.25", 0.25},
                  {u"=5.", 5.0},
                  {u"=.5", 0.5},
                  {u"=1e2", 100.0},
                  {u"=1E+2", 100.0},
                  {u"=1e-2", 0.01},
                  {u"=1 + 2", 3.0},
                  {u"= 1\r\n+\n2 ", 3.0}});
}

TEST(formula_values, unknown_names) {
    ExpectValues({{u"=_a", CellError{kName}},
                  {u"=\\x", CellError{kName}},
                  {u"=a.b1", CellError{kName}},
                  {u"=\u00E4", CellError{kName}},
                  {u"=\u0080", CellError{kName}},
                  {u"=Z_9", CellError{kName}},
                  {u"=nothing(A1,,2)", CellError{kName}},
                  {u"=nothing()", CellError{kName}}});
}

TEST(formula_values, arrays_have_rows_of_one_length) {
    ExpectValues({{u"={1}", RowOf({1.0})},
                  {u"={-1,\"a\"}", RowOf({-1.0, u"a"})},
                  {u"={1;2}", ArrayOf({{1.0}, {2.0}})},
                  {u"={1,2;3,4;5,6}", ArrayOf({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}})},
                  {u"={ 1 , 2 }", RowOf({1.0, 2.0})}});
}

TEST(formula_values, invalid_formulas) {
    Host host(15);
    for (const char16_t* text :
         {u"",         u"1+1",         u"=1.2.3", u"=1e",       u"=2E+",      u"=#nothing", u"=#",
          u"={}",      u"={1,",        u"={1,}",  u"={1;}",     u"={A1}",     u"={1,2;3}",  u"={1;2,3}",
          u"={1,2",    u"={1)",        u"={-",    u"=SUM(1 2)", u"=SUM(*)",   u"=SUM(1",    u"=SUM(1}",
          u"=SUM(,1",  u"=A1:5",       u"=1:A1",  u"=A1:",      u"=A1:B2:C3", u"='Sheet1'", u"='Sheet1'!",
          u"=Sheet1!", u"='Sheet1!A1", u"=@",     u"=!",        u"=[1]",      u"=)",        u"=1%2",
          u"=*1",      u"=1<>",        u"=><1",   u"=\"a",      u"=\"a\"\"",  u"=.",        u"=%",
          u"=-",       u"=(",          u"=()"})
        EXPECT_FALSE(host.Evaluate(text)) << ToUtf8(text);
}

TEST(formula_values, references_name_cells_and_rectangles) {
    Host host(15);
    host.Enter(u"A1", u"1");
    host.Enter(u"B2", u"4");
    host.Enter(u"AA10", u"9");
    const CellArray square = ArrayOf({{1.0, CellValue()}, {CellValue(), 4.0}});
    for (const char16_t* formula :
         {u"=A1:B2", u"=B2:A1", u"=A2:B1", u"=$B$1:a$2", u"=Sheet1!A1:B2", u"='sheet1'!A1:B2"})
        EXPECT_EQ(host.Evaluate(formula), CellValue(square)) << ToUtf8(formula);
    EXPECT_EQ(host.Evaluate(u"=aa10"), CellValue(9.0));
    EXPECT_EQ(host.Evaluate(u"=A1:A1"), CellValue(1.0));
    EXPECT_EQ(host.Evaluate(u"=A2"), CellValue());
    EXPECT_EQ(host.Evaluate(u"=Sheet2!A1:B2"), CellValue(CellError{kRef}));
    EXPECT_EQ(host.Evaluate(u"=SUM( A1:B2 , 1 )"), CellValue(6.0));
}

TEST(formula_values, brackets_nest_199_deep) {
    const auto nested = [](std::size_t depth) {
        return u"=" + std::u16string(depth, u'(') + u"1" + std::u16string(depth, u')');
    };
    Host host(15);
    EXPECT_EQ(host.Evaluate(nested(199)), CellValue(1.0));
    EXPECT_FALSE(host.Evaluate(nested(200)));
    EXPECT_EQ(host.Evaluate(u"=SUM(" + nested(100).substr(1) + u"," + nested(150).substr(1) + u")"),
              CellValue(2.0));
}

} // namespace
} // namespace metrify::host
