// The add-in from loading to unloading: the host calls of each step and the results.

#include "host/program/program_platform.h"
#include "host/sheet/utf8.h"
#include "tests/host/asked.h"
#include "tests/intended_leaks.h"

#include <gtest/gtest.h>
#include <thread>

namespace metrify::host {
namespace {

class observed_module : public testing::TestWithParam<int> {
  protected:
    observed_module() { host_.state().log.Start(); }

    void Load() {
        path_.insert(path_.rfind('.'), "Observed");
        std::string error;
        ASSERT_TRUE(host_.Load(path_, error)) << error;
    }

    // A thread that has called the add-in keeps the module loaded as long as it lives.
    template <class Result, class Body>
    static Result OnThread(Body body) {
        Result result;
        std::jthread([&] { result = body(); }).join();
        return result;
    }

    std::optional<CellValue> Run(const char16_t* macro, const std::vector<CellValue>& arguments = {}) {
        return OnThread<std::optional<CellValue>>([&] { return host_.RunCommand(macro, arguments); });
    }

    std::optional<CellValue> Evaluate(const char16_t* formula) {
        return OnThread<std::optional<CellValue>>([&] { return host_.Evaluate(formula); });
    }

    std::u16string LastMenu() { return host_.state().menus.menus().back().name; }

    void ExpectAsked(const char* step, const std::vector<Asked>& expected) {
        EXPECT_EQ(TakeAsked(host_), expected) << step;
    }

    // Calls in the family of the host.
    Asked Call(int function, std::vector<CellValue> arguments = {}) {
        return {function, host_.state().IsWide(), std::move(arguments)};
    }

    std::string path_ = ModuleBesideProgram();
    Host host_{GetParam()};
};

constexpr const char16_t* kObserver = u"xll_MetrifyObserved_observer";

TEST_P(observed_module, works_from_loading_to_unloading) {
    Load();
    ExpectAsked("loaded and attached", {});

    ASSERT_EQ(host_.CallEntryPoint("xlAutoAdd"), 1);
    ExpectAsked("added", {});

    // ---- Opening
    ASSERT_EQ(host_.CallEntryPoint("xlAutoOpen"), 1);
    const Asked settings = Call(xlfGetWorkspace, {37.0});
    const Asked name = Call(xlGetName);
    std::vector<Asked> opening{
        {xlfGetWorkspace | xlIntl, false, {2}},
        {xlCoerce | xlIntl, false, {FromUtf8(std::to_string(GetParam()) + ".0"), std::int32_t{xltypeInt}}},
        settings,
        settings,
        name,
        Call(xlfAddMenu, {10, MenuTable(), u"Metrify"}),
        Call(xlfAddMenu, {10, MenuTable()}),
        name,
        name,
    };
    for (const std::vector<CellValue>& arguments : AllRegistered(host_, u"MetrifyObserved"))
        opening.push_back(Call(xlfRegister, arguments));
    opening.insert(opening.end(), {settings, settings, settings});
    ExpectAsked("opened", opening);
    EXPECT_EQ(LastMenu(), u"Metrify");

    // ---- The worksheet function
    EXPECT_EQ(Evaluate(u"=Metrify(3.5,\"ft\",\"m\")"), CellValue(RowOf({1.0668, u"m\n\n"})));
    ExpectAsked("calculated", {Call(xlfInfo, {u"Release"})});

    // ---- The macro
    Run(u"Metrify_Macro");
    const Reference cell{host_.state().books.Active()->id(), {{0, 0, 0, 0}}, true};
    const Reference full{cell.sheet, cell.areas, false};
    const CellValue missing = MissingArgument{};
    const Asked formula = Call(xlfGetFormula | xlIntl, {full});
    const Asked part_of_array = Call(xlfGetCell, {49.0, full});
    const Asked to_a1 = Call(xlfFormulaConvert | xlIntl, {u"", false, true, missing, full});
    ExpectAsked("macro run",
                {
                    Call(xlfActiveCell),
                    Call(xlCoerce, {cell, std::int32_t{xltypeRef}}),
                    // Whether it uses the function, and whether it is empty.
                    formula,
                    part_of_array,
                    to_a1,
                    formula,
                    part_of_array,
                    to_a1,
                    Call(xlfFormulaConvert | xlIntl, {u"=Metrify()", true, false, missing, full}),
                    // The formula is calculated as it is entered.
                    Call(xlfInfo, {u"Release"}),
                    Call(xlcFormula | xlIntl, {u"=Metrify()", full}),
                    Call(xlcFunctionWizard),
                });
    EXPECT_EQ(host_.state().wizard_openings, (std::vector<std::u16string>{u"=Metrify()"}));

    // ---- Events with an observer, and without
    EXPECT_EQ(Run(kObserver, {11.0, u"Keep.xls"}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {11.0, u"Other.xls"}), CellValue(false));
    // The observer knows the path of its own module, which is not that of the program.
    EXPECT_EQ(Run(kObserver, {11.0, FromUtf8(path_)}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {12.0, u"Other.xls", true}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {12.0, u"Other.xls", false}), CellValue(false));
    EXPECT_EQ(Run(kObserver, {3.0, u"[Keep.xls]Sheet1", u"$A$1"}), CellValue(false));
    ExpectAsked("events observed", {});

    // ---- The ribbon's callback
    EXPECT_EQ(Run(u"Metrify.RibbonCallback", {8.0, u"id", u"tag", 1.0, u"", u"", true}), CellValue(-1.0));
    ExpectAsked("ribbon answered", {});

    // ---- Closing
    EXPECT_EQ(host_.CallEntryPoint("xlAutoClose"), 1);
    ExpectAsked("closed", {Call(xlfDeleteMenu, {10, u"Metrify"})});
    EXPECT_NE(LastMenu(), u"Metrify");
    EXPECT_EQ(Evaluate(u"=Metrify(3.5,\"ft\",\"m\")"), CellValue(RowOf({1.0668, u"m\n\n"})));
    TakeAsked(host_);

    // ---- Removing
    std::vector<Asked> removing{name};
    for (const char16_t* function : {u"Metrify.RibbonCallback", u"Metrify_Macro", u"Metrify", kObserver}) {
        const Registration* const registration = host_.state().registrations.Find(function);
        ASSERT_TRUE(registration);
        removing.push_back(Call(xlfUnregister, {registration->id}));
        removing.push_back(Call(xlfSetName, {function}));
        removing.push_back(name);
        removing.push_back(
            Call(xlfRegister, {host_.state().module->Path(), u"xlAutoRemove", u"J", function, missing, 0}));
    }
    {
        // Unloading does not release the state of other threads.
        const IntendedLeaks thread_state;
        EXPECT_EQ(host_.CallEntryPoint("xlAutoRemove"), 1);
    }
    ExpectAsked("removed", removing);
    EXPECT_FALSE(Run(u"Metrify_Macro_12"));

    // ---- Detaching
    host_.Unload();
    ExpectAsked("unloaded", {});
    EXPECT_TRUE(host_.state().registrations.All().empty());
    EXPECT_TRUE(host_.state().alerts.empty());
    EXPECT_EQ(host_.state().ledger.Counts().Outstanding(), 0U);
    EXPECT_EQ(host_.state().results.marked, host_.state().results.given_back);
}

INSTANTIATE_TEST_SUITE_P(versions, observed_module, testing::Values(4, 11, 12, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

} // namespace
} // namespace metrify::host
