// The macro on a sheet: formulas, questions and wizards.

#include "addin/macro.h"
#include "host/entry/registered_call.h"
#include "host/sheet/cell_records.h"
#include "stand_in_fixture.h"
#include "xllrt/value/record_memory.h"

#include <gmock/gmock.h>

namespace metrify {
namespace {

using host::Alert;
using host::CellPosition;
using testing::ElementsAre;
using testing::IsEmpty;
using Alerts = std::vector<Alert>;

const char16_t* const kQuestion = u"Delete existing contents in cell?";

class macro : public StandInTest {
  protected:
    void Enter(const char16_t* cell, const std::u16string& text) { ASSERT_TRUE(TheHost().Enter(cell, text)); }
    void Select(CellPosition at) { Host().books.SelectCell(at); }
    // As stored in the cell, in R1C1 style.
    std::u16string FormulaAt(CellPosition at) { return Host().books.Active()->FormulaText(at); }
};

// ---- The active cell

TEST_F(macro, an_empty_cell_gets_the_call_and_the_wizard_opens_without_a_question) {
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_EQ(FormulaAt({0, 0}), u"=Metrify()");
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
    EXPECT_THAT(Host().alerts, IsEmpty());
}

TEST_F(macro, the_call_goes_into_the_active_cell_and_no_other) {
    Select({6, 3});
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_EQ(FormulaAt({6, 3}), u"=Metrify()");
    EXPECT_EQ(Host().books.Active()->cells().size(), 1U);
    EXPECT_FALSE(Host().books.Active()->Find({6, 3})->array) << "it is no array formula";
}

TEST_F(macro, the_call_has_the_given_name) {
    start_function_wizard("Other");
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Other()"));
}

TEST_F(macro, without_an_active_cell_there_is_an_alert_and_nothing_else) {
    Host().books.SelectCell(std::nullopt);
    EXPECT_FALSE(start_function_wizard("Metrify"));
    EXPECT_EQ(Host().alerts, (Alerts{{u"Please select a cell for the result and try again.", 3, true}}));
    EXPECT_THAT(Host().wizard_openings, IsEmpty());
    EXPECT_TRUE(Host().books.Active()->cells().empty());
}

TEST_F(macro, without_a_workbook_there_is_the_same_alert) {
    Host().books.Close();
    EXPECT_FALSE(start_function_wizard("Metrify"));
    EXPECT_EQ(Host().alerts, (Alerts{{u"Please select a cell for the result and try again.", 3, true}}));
    EXPECT_THAT(Host().wizard_openings, IsEmpty());
}

// ---- A cell that is not empty

TEST_F(macro, a_formula_is_kept_and_no_wizard_opens_if_the_user_refuses) {
    Enter(u"A1", u"=1+1");
    Host().answers = {false};
    EXPECT_FALSE(start_function_wizard("Metrify"));
    EXPECT_EQ(Host().alerts, (Alerts{{kQuestion, 1, false}}));
    EXPECT_EQ(FormulaAt({0, 0}), u"=1+1");
    EXPECT_THAT(Host().wizard_openings, IsEmpty());
}

TEST_F(macro, a_formula_is_replaced_if_the_user_agrees) {
    Enter(u"A1", u"=1+1");
    Host().answers = {true};
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_EQ(Host().alerts, (Alerts{{kQuestion, 1, true}}));
    EXPECT_EQ(FormulaAt({0, 0}), u"=Metrify()");
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
}

TEST_F(macro, a_formula_that_uses_the_function_stays_and_the_wizard_opens_on_it) {
    Enter(u"A1", u"=Metrify(1,\"ft\",\"m\")");
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_THAT(Host().alerts, IsEmpty());
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify(1,\"ft\",\"m\")"));
}

TEST_F(macro, the_functions_name_is_found_in_any_case_and_anywhere) {
    for (const char16_t* formula :
         {u"=metrify(1,\"ft\",\"m\")", u"=1+INDEX(METRIFY(B1,\"ft\",\"m\"),1)", u"about metrify"}) {
        Enter(u"A1", formula);
        Host().wizard_openings.clear();
        EXPECT_TRUE(start_function_wizard("mETRIFY"));
        EXPECT_EQ(Host().wizard_openings.size(), 1U);
        EXPECT_THAT(Host().alerts, IsEmpty());
    }
}

TEST_F(macro, case_is_ignored_in_the_letters_from_a_to_z_and_in_nothing_else) {
    Enter(u"A1", u"about AMZ");
    EXPECT_TRUE(start_function_wizard("amz"));
    Enter(u"A1", u"about amz");
    EXPECT_TRUE(start_function_wizard("AMZ"));
    EXPECT_THAT(Host().alerts, IsEmpty());
    Enter(u"A1", u"about @[");
    Host().answers = {false};
    EXPECT_FALSE(start_function_wizard("`{"));
    EXPECT_EQ(Host().alerts.size(), 1U);
}

TEST_F(macro, the_formula_is_read_in_the_a1_style) {
    // In the R1C1 style the reference would read R[-1]C.
    Enter(u"A2", u"=A1+1");
    Select({1, 0});
    EXPECT_TRUE(start_function_wizard("A1+"));
    EXPECT_THAT(Host().alerts, IsEmpty());
}

TEST_F(macro, a_cell_in_an_array_leads_to_a_question_and_stays_unchanged_as_the_host_refuses) {
    Host().books.Active()->Make({0, 0}) = {u"={1,2}", 1.0, host::Area{0, 0, 0, 1}};
    Host().books.Active()->Make({0, 1}) = {u"={1,2}", 2.0, host::Area{0, 0, 0, 1}};
    Select({0, 1});
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_EQ(Host().alerts, (Alerts{{kQuestion, 1, true}}));
    EXPECT_EQ(FormulaAt({0, 1}), u"={1,2}");
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"={1,2}"));
}

TEST_F(macro, a_cell_in_an_array_that_uses_the_function_is_not_changed) {
    Host().books.Active()->Make({0, 0}) = {u"=Metrify(1,\"ft\",\"m\")", 1.0, host::Area{0, 0, 0, 1}};
    Host().books.Active()->Make({0, 1}) = {u"=Metrify(1,\"ft\",\"m\")", 2.0, host::Area{0, 0, 0, 1}};
    Select({0, 1});
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_THAT(Host().alerts, IsEmpty());
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify(1,\"ft\",\"m\")"));
}

// ---- Every kind of contents, with either answer, in both families

struct cell_contents {
    const char* kind;
    const char16_t* text; ///< as the user enters it
    bool is_array = false;
};

// Contents that are replaced only if the user agrees.
constexpr cell_contents occupied[] = {
    {"number", u"3.5"},
    {"negative number", u"-1"},
    {"boolean", u"TRUE"},
    {"error", u"#N/A"},
    {"text that reads as a name", u"ft"},
    {"text that reads as a reference", u"C3"},
    {"text that reads as a sum", u"C3+1"},
    {"two words", u"hello world"},
    {"text with an apostrophe", u"it's 5 o'clock"},
    {"text with a colon", u"total:"},
    {"number with a unit", u"3 ft"},
    {"list", u"a, b"},
    {"blank", u" "},
    {"formula", u"=1+1"},
    {"formula with a reference", u"=C3+1"},
    {"array formula of one cell", u"={5}", true},
};

// Contents on which the wizard opens.
constexpr cell_contents using_the_function[] = {
    {"formula", u"=Metrify(1,\"ft\",\"m\")"},
    {"formula in capitals", u"=METRIFY(1,\"ft\",\"m\")"},
    {"formula in small letters", u"=1+INDEX(metrify(C3,\"ft\",\"m\"),1)"},
    {"text", u"about metrify"},
    {"text in capitals", u"METRIFY"},
    {"text that is no formula", u"see Metrify: below"},
    {"array formula", u"=INDEX(Metrify(1,\"ft\",\"m\"),1)", true},
};

class macro_on_contents : public macro, public testing::WithParamInterface<int> {
  protected:
    macro_on_contents() { Start(GetParam()); }

    // Runs the macro on a cell with these contents, and answers a question.
    bool RunOn(const cell_contents& contents, bool agrees) {
        Select(at);
        if (contents.is_array)
            Host().books.Active()->Make(at) = {contents.text, 5.0, host::Area{1, 1, 1, 1}};
        else
            Enter(u"B2", contents.text);
        before = FormulaAt(at);
        EXPECT_FALSE(before.empty());
        Host().alerts.clear();
        Host().wizard_openings.clear();
        Host().answers = {agrees};
        return start_function_wizard("Metrify");
    }

    const CellPosition at{1, 1};
    std::u16string before;
};

TEST_P(macro_on_contents, are_replaced_if_the_user_agrees) {
    for (const cell_contents& contents : occupied) {
        SCOPED_TRACE(contents.kind);
        EXPECT_TRUE(RunOn(contents, true));
        EXPECT_EQ(Host().alerts, (Alerts{{kQuestion, 1, true}}));
        EXPECT_EQ(FormulaAt(at), u"=Metrify()");
        EXPECT_FALSE(Host().books.Active()->Find(at)->array);
        EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
    }
}

TEST_P(macro_on_contents, stay_and_no_wizard_opens_if_the_user_refuses) {
    for (const cell_contents& contents : occupied) {
        SCOPED_TRACE(contents.kind);
        EXPECT_FALSE(RunOn(contents, false));
        EXPECT_EQ(Host().alerts, (Alerts{{kQuestion, 1, false}}));
        EXPECT_EQ(FormulaAt(at), before);
        EXPECT_EQ(Host().books.Active()->Find(at)->array.has_value(), contents.is_array);
        EXPECT_THAT(Host().wizard_openings, IsEmpty());
    }
}

TEST_P(macro_on_contents, that_use_the_function_stay_without_a_question_and_the_wizard_opens_on_them) {
    for (const cell_contents& contents : using_the_function) {
        SCOPED_TRACE(contents.kind);
        EXPECT_TRUE(RunOn(contents, false));
        EXPECT_THAT(Host().alerts, IsEmpty());
        EXPECT_EQ(FormulaAt(at), before);
        EXPECT_EQ(Host().books.Active()->Find(at)->array.has_value(), contents.is_array);
        EXPECT_THAT(Host().wizard_openings, ElementsAre(before));
    }
}

TEST_P(macro_on_contents, that_are_empty_are_replaced_without_a_question) {
    Host().answers = {false};
    EXPECT_TRUE(start_function_wizard("Metrify"));
    EXPECT_THAT(Host().alerts, IsEmpty());
    EXPECT_EQ(FormulaAt({0, 0}), u"=Metrify()");
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
}

INSTANTIATE_TEST_SUITE_P(versions, macro_on_contents, testing::Values(4, 11, 12, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

// ---- Other arguments

// A reference to cells of a sheet, with its memory.
class WideReference {
  public:
    WideReference(IDSHEET sheet, const std::vector<CellPosition>& cells) {
        host::Reference reference{sheet, {}, false};
        for (const CellPosition at : cells)
            reference.areas.push_back({at.row, at.row, at.column, at.column});
        host::WriteRecord(reference, owner_.record);
    }
    CXlOper Value() const { return CXlOper::Wrap12(&owner_.record); }

  private:
    RecordOwner<XLOPER12> owner_;
};

TEST_F(macro, a_reference_of_several_areas_gets_the_call_in_each_of_them) {
    const WideReference reference(Host().books.Active()->id(), {{0, 0}, {2, 1}});
    EXPECT_TRUE(start_function_wizard_on(reference.Value(), "Metrify"));
    EXPECT_EQ(FormulaAt({0, 0}), u"=Metrify()");
    EXPECT_EQ(FormulaAt({2, 1}), u"=Metrify()");
    EXPECT_EQ(Host().wizard_openings.size(), 1U);
}

TEST_F(macro, no_cell_at_all_leads_to_the_wizard_and_writes_nothing) {
    XLOPER12 nil{};
    nil.xltype = xltypeNil;
    EXPECT_TRUE(start_function_wizard_on(CXlOper::Wrap12(&nil), "Metrify"));
    EXPECT_TRUE(Host().books.Active()->cells().empty());
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u""));
    EXPECT_THAT(Host().alerts, IsEmpty());
}

TEST_F(macro, a_value_that_is_no_reference_is_ignored) {
    CXlOper text;
    text.SetText("A1");
    for (const CXlOper& value : {CXlOper(), CXlOper(3.5), CXlOper(true), text})
        EXPECT_TRUE(start_function_wizard_on(value, "Metrify"));
    EXPECT_TRUE(Host().books.Active()->cells().empty());
    EXPECT_THAT(Host().wizard_openings, IsEmpty());
    EXPECT_THAT(Host().alerts, IsEmpty());
}

TEST_F(macro, a_cell_whose_formula_cannot_be_read_is_ignored) {
    // There is no such sheet.
    const WideReference reference(4711, {{0, 0}});
    EXPECT_TRUE(start_function_wizard_on(reference.Value(), "Metrify"));
    EXPECT_TRUE(Host().books.Active()->cells().empty());
}

// ---- The entries

TEST_F(macro, the_wide_entry_opens_the_wizard_and_gives_no_value) {
    const XLOPER12* const answer = Metrify_Macro_12();
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeErr);
    EXPECT_EQ(answer->val.err, xlerrValue);
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
}

TEST_F(macro, the_narrow_entry_does_the_same_on_an_old_host) {
    Start(11);
    const XLOPER* const answer = Metrify_Macro_4();
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeErr);
    EXPECT_EQ(answer->val.err, xlerrValue);
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
}

TEST_F(macro, nothing_happens_if_commands_are_not_allowed) {
    const host::ContextScope scope(host::CallContext::worksheet_function);
    EXPECT_FALSE(start_function_wizard("Metrify"));
    EXPECT_TRUE(Host().books.Active()->cells().empty());
    EXPECT_THAT(Host().alerts, IsEmpty());
    EXPECT_THAT(Host().wizard_openings, IsEmpty());
}

} // namespace
} // namespace metrify
