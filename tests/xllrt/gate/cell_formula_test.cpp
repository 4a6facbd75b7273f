#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/gate/cell_formula.h"
#include "xllrt/gate/host_gate.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

class CellFormula : public AddInTest {
  protected:
    CellFormula() {
        SetHostVersion(14);
        host.On(xlfActiveCell, Reply{0, Reply::SingleReference()});
        host.On(xlfGetFormula, Reply{0, u"=R1C1"});
        host.On(xlfGetCell, Reply{0, true});
        host.On(xlfFormulaConvert, Reply{0, u"=$A$1"});
    }

    // References as the host returns them.
    CXlOper Reference(Reply reply) {
        host.On(xlfActiveCell, reply);
        CXlOper reference;
        EXPECT_EQ(CallNoArgs(reference, xlfActiveCell), 0);
        host.TakeCalls();
        return reference;
    }
    CXlOper Full() { return Reference({0, Reply::FullReference()}); }
    CXlOper Single() { return Reference({0, Reply::SingleReference()}); }

    std::string formula = "before";
    bool is_array = false;
};

// ---- Coercion

TEST_F(CellFormula, coerce_asks_the_host_with_the_type_as_an_integer) {
    CXlOper source;
    source.SetText("12");
    CXlOper result;
    EXPECT_EQ(Coerce(result, xltypeInt, &source), 0);
    EXPECT_EQ(result.ToNumber(), 12.0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlCoerce(\"12\", 2048i)"));
}

TEST_F(CellFormula, coerce_without_source_converts_the_result_itself) {
    CXlOper result;
    result.SetText("12");
    EXPECT_EQ(Coerce(result, xltypeInt), 0);
    EXPECT_TRUE(result.IsType(xltypeInt));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlCoerce(\"12\", 2048i)"));
}

TEST_F(CellFormula, coerce_to_another_type_than_requested_is_32) {
    host.On(xlCoerce, Reply{0, 12.0});
    CXlOper result(true);
    EXPECT_EQ(Coerce(result, xltypeInt), 32);
}

TEST_F(CellFormula, coerce_that_fails_keeps_the_earlier_value) {
    host.On(xlCoerce, Reply::Refused(xlretUncalced));
    CXlOper result(2.5);
    EXPECT_EQ(Coerce(result, xltypeInt), 32) << "the result does not have the type";
    EXPECT_EQ(result.ToNumber(), 2.5);
    EXPECT_EQ(Coerce(result, xltypeNum), xlretUncalced) << "it has the type, so the host's code is returned";
}

// ---- The active cell

TEST_F(CellFormula, the_active_cell_is_a_full_reference) {
    CXlOper cell;
    EXPECT_TRUE(ActiveCell(cell));
    EXPECT_TRUE(cell.IsRef());
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfActiveCell()", "12 xlCoerce(SRef, 8i)"));
}

TEST_F(CellFormula, there_may_be_no_active_cell) {
    host.On(xlfActiveCell, Reply::Refused());
    CXlOper cell;
    EXPECT_FALSE(ActiveCell(cell));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfActiveCell()"));
}

TEST_F(CellFormula, an_active_cell_that_is_not_a_reference_is_none) {
    host.On(xlfActiveCell, Reply{0, Reply::Error{xlerrNA}});
    host.On(xlCoerce, Reply::Refused());
    CXlOper cell;
    EXPECT_FALSE(ActiveCell(cell));
}

// ---- Reading

TEST_F(CellFormula, a_formula_is_read_in_r1c1_style) {
    EXPECT_TRUE(GetCellFormula(Full(), true, formula, is_array, false));
    EXPECT_EQ(formula, "=R1C1");
    EXPECT_TRUE(is_array);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetFormula|xlIntl(Ref)", "12 xlfGetCell(49, Ref)"));
}

TEST_F(CellFormula, a_formula_is_converted_to_a1_style_on_request) {
    EXPECT_TRUE(GetCellFormula(Full(), true, formula, is_array, true));
    EXPECT_EQ(formula, "=$A$1");
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlfGetFormula|xlIntl(Ref)", "12 xlfGetCell(49, Ref)",
                            "12 xlfFormulaConvert|xlIntl(\"=R1C1\", FALSE, TRUE, missing, Ref)"));
}

TEST_F(CellFormula, a_formula_is_in_the_users_form_without_the_option) {
    EXPECT_TRUE(GetCellFormula(Full(), false, formula, is_array, true));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetFormula(Ref)", "12 xlfGetCell(49, Ref)",
                                              "12 xlfFormulaConvert(\"=R1C1\", FALSE, TRUE, missing, Ref)"));
}

TEST_F(CellFormula, the_short_form_is_international) {
    EXPECT_TRUE(GetCellFormula(Full(), formula, is_array, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetFormula|xlIntl(Ref)", "12 xlfGetCell(49, Ref)"));
}

TEST_F(CellFormula, a_single_reference_has_the_formula_of_the_full_one) {
    EXPECT_TRUE(GetCellFormula(Single(), true, formula, is_array, true));
    EXPECT_EQ(formula, "=$A$1");
    EXPECT_TRUE(is_array);
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlCoerce(SRef, 8i)", "12 xlfGetFormula|xlIntl(Ref)", "12 xlfGetCell(49, Ref)",
                            "12 xlfFormulaConvert|xlIntl(\"=R1C1\", FALSE, TRUE, missing, Ref)"));
}

TEST_F(CellFormula, a_single_reference_that_cannot_be_coerced_has_none) {
    const CXlOper reference = Single();
    host.On(xlCoerce, Reply::Refused());
    EXPECT_FALSE(GetCellFormula(reference, true, formula, is_array, true));
    EXPECT_EQ(formula, "before");
}

TEST_F(CellFormula, a_number_has_no_formula_and_the_text_is_unchanged) {
    EXPECT_FALSE(GetCellFormula(CXlOper(1.0), true, formula, is_array, true));
    EXPECT_EQ(formula, "before");
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(CellFormula, any_failure_leaves_the_outputs_unchanged) {
    const CXlOper reference = Full();
    for (const int failing : {xlfFormulaConvert, xlfGetCell, xlfGetFormula}) {
        host.On(failing, Reply::Refused());
        EXPECT_FALSE(GetCellFormula(reference, true, formula, is_array, true)) << failing;
        EXPECT_EQ(formula, "before");
        EXPECT_FALSE(is_array);
    }
}

TEST_F(CellFormula, a_text_that_the_host_converts_to_an_error_is_returned_unchanged) {
    host.On(xlfGetFormula, Reply{0, u"hello world"});
    host.On(xlfFormulaConvert, Reply{0, Reply::Error{xlerrValue}});
    for (const int version : {11, 14}) {
        SetHostVersion(version);
        formula = "before";
        is_array = false;
        EXPECT_TRUE(GetCellFormula(Full(), true, formula, is_array, true));
        EXPECT_EQ(formula, "hello world");
        EXPECT_TRUE(is_array);
    }
}

TEST_F(CellFormula, an_unreadable_array_answer_is_false) {
    host.On(xlfGetCell, Reply{0, Reply::Error{xlerrNA}});
    is_array = true;
    EXPECT_TRUE(GetCellFormula(Full(), true, formula, is_array, false));
    EXPECT_FALSE(is_array);
}

// ---- Conversion

TEST_F(CellFormula, conversion_to_a1_is_from_r1c1) {
    std::string converted = "before";
    EXPECT_TRUE(ConvertFormula(Full(), true, "=R1C1", converted, true));
    EXPECT_EQ(converted, "=$A$1");
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlfFormulaConvert|xlIntl(\"=R1C1\", FALSE, TRUE, missing, Ref)"));
}

TEST_F(CellFormula, conversion_to_r1c1_is_from_a1) {
    std::string converted;
    EXPECT_TRUE(ConvertFormula(Full(), false, "=A1", converted, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfFormulaConvert(\"=A1\", TRUE, FALSE, missing, Ref)"));
}

TEST_F(CellFormula, an_error_is_a_failed_conversion) {
    const CXlOper reference = Full();
    std::string converted = "before";
    host.On(xlfFormulaConvert, Reply{0, Reply::Error{xlerrValue}});
    EXPECT_FALSE(ConvertFormula(reference, true, "=R1C1", converted, true));
    host.On(xlfFormulaConvert, Reply::Refused());
    EXPECT_FALSE(ConvertFormula(reference, true, "=R1C1", converted, true));
    EXPECT_EQ(converted, "before");
}

// ---- Writing

TEST_F(CellFormula, a_formula_is_written_unchanged) {
    EXPECT_TRUE(SetCellFormula(Full(), true, "=1", false, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 0x8060|xlIntl(\"=1\", Ref)"));
    EXPECT_TRUE(SetCellFormula(Full(), false, "=1", false, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 0x8060(\"=1\", Ref)"));
}

TEST_F(CellFormula, an_array_formula_has_its_own_command) {
    EXPECT_TRUE(SetCellFormula(Full(), true, "=1", true, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 0x8062|xlIntl(\"=1\", Ref)"));
}

TEST_F(CellFormula, from_a1_style_it_is_converted_first) {
    host.On(xlfFormulaConvert, Reply{0, u"=R1C1"});
    EXPECT_TRUE(SetCellFormula(Full(), "=A1", false, true));
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlfFormulaConvert|xlIntl(\"=A1\", TRUE, FALSE, missing, Ref)",
                            "12 0x8060|xlIntl(\"=R1C1\", Ref)"));
}

TEST_F(CellFormula, a_formula_that_cannot_be_converted_is_not_written) {
    const CXlOper reference = Full();
    host.On(xlfFormulaConvert, Reply::Refused());
    EXPECT_FALSE(SetCellFormula(reference, "=A1", false, true));
    EXPECT_EQ(host.TakeCalls().size(), 1U);
}

TEST_F(CellFormula, the_target_must_be_a_full_reference) {
    EXPECT_FALSE(SetCellFormula(Single(), "=1", false, false));
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(CellFormula, a_null_formula_is_the_empty_text) {
    EXPECT_TRUE(SetCellFormula(Full(), nullptr, false, false));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 0x8060|xlIntl(\"\", Ref)"));
}

TEST_F(CellFormula, a_host_that_refuses_the_formula_is_a_failure) {
    const CXlOper reference = Full();
    host.On(0x8060, Reply::Refused());
    EXPECT_FALSE(SetCellFormula(reference, "=1", false, false));
}

} // namespace
