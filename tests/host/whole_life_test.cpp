// The real module from its loading to its unloading, as a host of each kind sees it.

#include "host/program/program_platform.h"
#include "host/sheet/utf8.h"
#include "tests/host/asked.h"
#include "tests/intended_leaks.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

namespace metrify::host {
namespace {

class whole_life : public testing::TestWithParam<int> {
  protected:
    static void Load(Host& host) {
        std::string error;
        ASSERT_TRUE(host.Load(ModuleBesideProgram(), error)) << error;
    }

    static void Open(Host& host) {
        Load(host);
        ASSERT_EQ(host.CallEntryPoint("xlAutoOpen"), 1);
    }

    static void ExpectBalance(Host& host) {
        const LedgerCounts counts = host.state().ledger.Counts();
        EXPECT_GT(counts.handed_out, 0U);
        EXPECT_EQ(counts.Outstanding(), 0U);
        EXPECT_EQ(counts.refused, 0U);
        EXPECT_EQ(host.state().results.marked, host.state().results.given_back);
    }
};

constexpr const char16_t* kConversion = u"=Metrify(3.5,\"ft\",\"m\")";

// Does something on a thread of its own. A thread that has called the function keeps the module loaded as
// long as it lives.
template <class Body>
void OnThread(Body body) {
    const std::jthread thread(body);
}

std::optional<CellValue> Evaluate(Host& host, std::u16string_view formula) {
    std::optional<CellValue> value;
    OnThread([&] { value = host.Evaluate(formula); });
    return value;
}

// ---- From version 4 to version 15

TEST_P(whole_life, opening_asks_the_host_in_this_order) {
    Host host(GetParam());
    host.state().log.Start();
    Open(host);
    std::vector<Asked> asked = TakeAsked(host);
    // What is registered is looked at by itself.
    std::erase_if(asked, [](const Asked& call) { return call.function == xlfRegister; });
    const bool is_wide = host.state().IsWide();
    const std::u16string version = FromUtf8(std::to_string(GetParam()) + ".0");
    const Asked settings{xlfGetWorkspace, is_wide, {37.0}};
    const Asked name{xlGetName, is_wide, {}};
    const std::vector<Asked> expected{
        // The version, in the narrow family whatever the host.
        {xlfGetWorkspace | xlIntl, false, {2}},
        {xlCoerce | xlIntl, false, {version, std::int32_t{xltypeInt}}},
        // The letters of rows and columns.
        settings,
        settings,
        // The path of the module.
        name,
        // The menu, in the place of another of its name, and there is none.
        {xlfAddMenu, is_wide, {10, MenuTable(), u"Metrify"}},
        {xlfAddMenu, is_wide, {10, MenuTable()}},
        // The path again, for the observer function and for the registration.
        name,
        name,
        // List separator, letters of rows and columns.
        settings,
        settings,
        settings,
    };
    EXPECT_EQ(asked, expected);
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, opening_registers_all_functions_in_the_family_of_the_host) {
    Host host(GetParam());
    host.state().log.Start();
    Open(host);
    const std::vector<LoggedCall> registered = host.state().log.CallsOf(xlfRegister);
    const std::vector<std::vector<CellValue>> expected = AllRegistered(host, u"Metrify");
    ASSERT_EQ(registered.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(registered[i].is_wide, host.state().IsWide());
        EXPECT_EQ(registered[i].arguments, expected[i]) << i;
        EXPECT_TRUE(registered[i].result.Is<double>());
    }
}

TEST_P(whole_life, the_function_converts) {
    Host host(GetParam());
    Open(host);
    EXPECT_EQ(Evaluate(host, kConversion), CellValue(RowOf({1.0668, u"m\n\n"})));
    EXPECT_EQ(Evaluate(host, u"=Metrify(3.5,\"ft\",\"kg\")"),
              CellValue(RowOf({u"ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n", u""})));
    EXPECT_EQ(host.state().results.marked, 2U);
    EXPECT_EQ(host.state().results.given_back, 2U);
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, the_function_asks_for_the_release_and_nothing_else) {
    Host host(GetParam());
    Open(host);
    host.state().log.Start();
    Evaluate(host, kConversion);
    EXPECT_EQ(TakeAsked(host), (std::vector<Asked>{{xlfInfo, host.state().IsWide(), {u"Release"}}}));
}

TEST_P(whole_life, the_function_works_from_cell_to_cell) {
    Host host(GetParam());
    Open(host);
    OnThread([&] {
        host.Enter(u"A1", u"3.5");
        host.Enter(u"B1", u"ft");
        host.Enter(u"C1", u"m");
        host.Enter(u"D1", u"=INDEX(Metrify(A1,B1,C1),1)");
        EXPECT_EQ(host.ValueOf(u"D1"), CellValue(1.0668));
        host.Enter(u"C1", u"cm");
        EXPECT_EQ(host.ValueOf(u"D1"), CellValue(106.68));
    });
}

TEST_P(whole_life, the_add_in_manager_is_told_the_name) {
    Host host(GetParam());
    Open(host);
    for (const CellValue& action : {CellValue(1.0), CellValue(1), CellValue(u"1")})
        EXPECT_EQ(host.AddInManagerInfo(action), CellValue(u"Metrify"));
    EXPECT_EQ(host.AddInManagerInfo(2.0), CellValue(CellError{xlerrValue}));
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, a_second_opening_is_refused_and_asks_nothing) {
    Host host(GetParam());
    Open(host);
    host.state().log.Start();
    EXPECT_EQ(host.CallEntryPoint("xlAutoOpen"), 0);
    EXPECT_TRUE(host.state().log.Calls().empty());
}

TEST_P(whole_life, closing_leaves_the_functions_registered) {
    Host host(GetParam());
    Open(host);
    const std::size_t registered = host.state().registrations.All().size();
    EXPECT_EQ(host.CallEntryPoint("xlAutoClose"), 1);
    EXPECT_EQ(host.state().registrations.All().size(), registered);
    EXPECT_EQ(Evaluate(host, kConversion), CellValue(RowOf({1.0668, u"m\n\n"})));
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, removing_unregisters_each_function_in_four_calls) {
    Host host(GetParam());
    Open(host);
    const auto* registration = host.state().registrations.Find(u"Metrify");
    ASSERT_TRUE(registration);
    const double id = registration->id;
    host.CallEntryPoint("xlAutoClose");
    host.state().log.Start();
    {
        // Unloading leaves the state of each thread where it is.
        const IntendedLeaks thread_state;
        EXPECT_EQ(host.CallEntryPoint("xlAutoRemove"), 1);
    }
    const bool is_wide = host.state().IsWide();
    const Asked name{xlGetName, is_wide, {}};
    const std::vector<Asked> expected{
        {xlfUnregister, is_wide, {id}},
        {xlfSetName, is_wide, {u"Metrify"}},
        name,
        {xlfRegister,
         is_wide,
         {host.state().module->Path(), u"xlAutoRemove", u"J", u"Metrify", MissingArgument{}, 0}},
    };
    const std::vector<Asked> asked = TakeAsked(host);
    EXPECT_NE(std::search(asked.begin(), asked.end(), expected.begin(), expected.end()), asked.end());
    EXPECT_NE(Evaluate(host, kConversion), CellValue(RowOf({1.0668, u"m\n\n"})));
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, removing_what_never_opened_does_nothing) {
    Host host(GetParam());
    Load(host);
    host.state().log.Start();
    EXPECT_EQ(host.CallEntryPoint("xlAutoRemove"), 1);
    EXPECT_TRUE(host.state().log.Calls().empty());
}

TEST_P(whole_life, loading_alone_asks_nothing) {
    Host host(GetParam());
    host.state().log.Start();
    Load(host);
    EXPECT_TRUE(host.state().log.Calls().empty());
}

TEST_P(whole_life, a_module_loaded_again_opens_again) {
    Host host(GetParam());
    for (int i = 0; i < 2; ++i) {
        Open(host);
        EXPECT_EQ(Evaluate(host, kConversion), CellValue(RowOf({1.0668, u"m\n\n"})));
        host.Unload();
    }
    ExpectBalance(host);
}

TEST_P(whole_life, opening_and_calling_shows_no_alert) {
    Host host(GetParam());
    Open(host);
    Evaluate(host, kConversion);
    host.CallEntryPoint("xlAutoClose");
    EXPECT_TRUE(host.state().alerts.empty());
}

TEST_P(whole_life, the_macro_runs_from_the_menu) {
    Host host(GetParam());
    Open(host);
    const MenuItem menu = host.state().menus.menus().back();
    ASSERT_EQ(menu.name, u"Metrify");
    ASSERT_EQ(menu.items.size(), 1U);
    OnThread([&] { EXPECT_TRUE(host.RunCommand(menu.items[0].macro)); });
    EXPECT_EQ(host.state().books.Active()->FormulaText({0, 0}), u"=Metrify()");
    EXPECT_EQ(host.state().wizard_openings, (std::vector<std::u16string>{u"=Metrify()"}));
    EXPECT_TRUE(host.state().alerts.empty());
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, an_event_that_nobody_observes_is_answered_false) {
    Host host(GetParam());
    Open(host);
    OnThread([&] {
        EXPECT_EQ(host.RunCommand(u"xll_Metrify_observer", {11.0, u"Book1"}), CellValue(false));
        EXPECT_EQ(host.RunCommand(u"xll_Metrify_observer", {99.0, 3.5}), CellValue(false));
    });
    host.Unload();
    ExpectBalance(host);
}

TEST_P(whole_life, closing_takes_the_menu_away_and_asks_nothing_else) {
    Host host(GetParam());
    Open(host);
    const std::size_t menus = host.state().menus.menus().size();
    host.state().log.Start();
    EXPECT_EQ(host.CallEntryPoint("xlAutoClose"), 1);
    EXPECT_EQ(TakeAsked(host),
              (std::vector<Asked>{{xlfDeleteMenu, host.state().IsWide(), {10, u"Metrify"}}}));
    EXPECT_EQ(host.state().menus.menus().size(), menus - 1);
    EXPECT_NE(host.state().menus.menus().back().name, u"Metrify");
}

INSTANTIATE_TEST_SUITE_P(versions, whole_life, testing::Values(4, 11, 12, 14, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

// ---- Version 16

TEST_F(whole_life, version_16_opens_and_is_refused_by_the_function) {
    Host host(16);
    Open(host);
    const auto value = Evaluate(host, kConversion);
    ASSERT_TRUE(value);
    const auto* text = value->As<std::u16string>();
    ASSERT_TRUE(text);
    EXPECT_TRUE(text->starts_with(u"This version of Excel is not supported.  Check "));
    host.Unload();
    ExpectBalance(host);
}

// ---- Threads

TEST_F(whole_life, several_threads_give_what_one_gives) {
    Host host(15);
    Open(host);
    std::vector<std::u16string> formulas;
    for (int i = 0; i < 400; ++i) {
        const std::u16string number = FromUtf8(std::to_string(i));
        formulas.push_back(u"=Metrify(" + number + u",\"ft\",\"m\")");
        formulas.push_back(u"=Metrify(" + number + u",\"unit" + number + u"\",\"m\")");
    }
    const auto expected = host.EvaluateAll(formulas, 1);
    EXPECT_EQ(host.EvaluateAll(formulas, 8), expected);
    EXPECT_EQ(*expected[7], CellValue(RowOf({u"ERROR: 'unit3' undefined.\n\n", u""})));
    host.Unload();
    ExpectBalance(host);
}

} // namespace
} // namespace metrify::host
