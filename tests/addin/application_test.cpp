// The add-in's application in the test host, from its opening to its removal, with observers.

#include "addin/application.h"
#include "addin/function_records.h"
#include "host/entry/registered_call.h"
#include "own_entries.h"
#include "stand_in_fixture.h"
#include "tests/xllrt/event/recording_integration.h"
#include "xllrt/app/ribbon_callback.h"
#include "xllrt/gate/host_window.h"

#include <gmock/gmock.h>
#include <map>

namespace metrify {
namespace {

using host::Alert;
using host::CellValue;
using testing::ElementsAre;
using testing::IsEmpty;

// Automation that runs a macro as a registered command of the add-in.
CellValue ToCell(const XlComValue& value) {
    if (const auto* text = std::get_if<std::u16string>(&value))
        return *text;
    if (const auto* number = std::get_if<std::int32_t>(&value))
        return static_cast<double>(*number);
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag;
    return {};
}

// Cancels the closing of a workbook, or records it.
class KeepingObserver final : public CXlEventStaticObserver<CXlWorkbookBeforeCloseEvent> {
  public:
    void Notify(CXlBeforeCloseEventArgs& args) override {
        args.cancel = args.workbook == "Keep.xls";
        closing.push_back(args.workbook);
    }

    std::vector<std::string> closing;
};

class OpenObserver final : public CXlEventStaticObserver<CXllOpenEvent> {
  public:
    void Notify(CXllOpenEventArgs& args) override {
        if (throws)
            throw CXlRuntimeException(std::string("observer failed"));
        args.cancel = true;
    }

    bool throws = false;
};

constinit XlFunctionRecord linked_record{.functionName = u"linked here"};
const CXlFunctionRecordLink link_of_record(linked_record);

class CMetrifyAppTest : public StandInTest, public testing::WithParamInterface<int> {
  protected:
    CMetrifyAppTest() {
        Start(GetParam());
        integration.script.run = [this](std::span<const XlComValue> values, CXlOper& answer) {
            std::vector<CellValue> arguments;
            for (const XlComValue& value : values.subspan(1))
                arguments.push_back(ToCell(value));
            const auto given = TheHost().RunCommand(std::get<std::u16string>(values.front()), arguments);
            const bool* const boolean = given ? given->As<bool>() : nullptr;
            if (boolean)
                answer.SetBool(*boolean ? 1 : 0);
            return boolean != nullptr;
        };
        auto entries = std::make_unique<OwnEntries>();
        module = entries.get();
        TheHost().Adopt(std::move(entries));
        app = std::make_unique<CMetrifyApp>(integration);
        app->addInName.Assign("Metrify");
        // Built from the linked records.
        for (const XlFunctionRecord* record : {&ribbon_record, &macro_record, &metrify_record})
            app->functions.Add(CXlFunctionDescriptor(*record));
    }
    ~CMetrifyAppTest() override {
        app->events.DetachAll();
        TheHost().Unload();
    }

    // As the loader does, without the records of the whole process.
    void Open(int expected = 1) {
        app->events.AttachEarly();
        EXPECT_EQ(TheHost().CallEntryPoint("xlAutoOpen"), expected);
    }

    // The menus after the host's own.
    std::vector<host::MenuItem> OwnMenus() {
        const std::vector<host::MenuItem>& menus = Host().menus.menus();
        return {menus.begin() + 9, menus.end()};
    }

    // An unregistered name refers to another procedure.
    bool IsRegistered(std::u16string_view name) {
        const host::Registration* found = Host().registrations.Find(name);
        return found && found->procedure != u"xlAutoRemove";
    }

    RecordingIntegration integration;
    std::unique_ptr<CMetrifyApp> app;
    OwnEntries* module = nullptr;
};

TEST_P(CMetrifyAppTest, attaching_names_the_add_in_and_uses_the_linked_records) {
    app->addInName.Assign("");
    EXPECT_EQ(app->OnProcessAttach(), 1);
    EXPECT_EQ(app->GetAddInName(), u"Metrify");
    EXPECT_NE(app->functions.FindFunction("linked here"), nullptr);
}

// ---- The menu

TEST_P(CMetrifyAppTest, opening_builds_the_menu_with_one_item) {
    Open();
    const auto menus = OwnMenus();
    ASSERT_EQ(menus.size(), 1U);
    EXPECT_EQ(menus[0].name, u"Metrify");
    EXPECT_EQ(menus[0].macro, u"");
    EXPECT_EQ(menus[0].shortcut, u"");
    EXPECT_EQ(menus[0].status, u"Metrify add-in menu");
    EXPECT_EQ(menus[0].help, u"");
    ASSERT_EQ(menus[0].items.size(), 1U);
    EXPECT_EQ(menus[0].items[0].name, u"Metrify");
    EXPECT_EQ(menus[0].items[0].macro, u"Metrify_Macro");
    EXPECT_EQ(menus[0].items[0].shortcut, u"");
    EXPECT_EQ(menus[0].items[0].status, u"Metrify Function");
    EXPECT_EQ(menus[0].items[0].help, u"");
}

TEST_P(CMetrifyAppTest, the_menu_is_inserted_before_a_menu_of_its_name) {
    Host().menus.AddMenu(host::ArrayOf({{u"&Metrify", u"", u"", u"", u""}}), 2.0);
    Open();
    const std::vector<host::MenuItem>& menus = Host().menus.menus();
    EXPECT_EQ(menus[1].name, u"Metrify");
    EXPECT_EQ(menus[2].name, u"&Metrify");
}

TEST_P(CMetrifyAppTest, closing_removes_the_menu_and_keeps_the_functions) {
    Open();
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoClose"), 1);
    EXPECT_THAT(OwnMenus(), IsEmpty());
    EXPECT_TRUE(IsRegistered(u"Metrify"));
    EXPECT_TRUE(IsRegistered(u"Metrify_Macro"));
}

TEST_P(CMetrifyAppTest, the_add_in_opens_without_a_menu_that_the_host_refuses) {
    // Menus are for commands only.
    const host::ContextScope scope(host::CallContext::macro_function);
    EXPECT_EQ(app->OnOpen(), 1);
    EXPECT_THAT(OwnMenus(), IsEmpty());
}

TEST_P(CMetrifyAppTest, closing_does_not_report_a_menu_that_was_removed_before) {
    Open();
    Host().menus.Delete(u"Metrify", host::MissingArgument{});
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoClose"), 1);
    EXPECT_THAT(Host().alerts, IsEmpty());
}

// ---- The macro

TEST_P(CMetrifyAppTest, the_menus_macro_is_a_command_that_opens_the_wizard) {
    Open();
    const auto answer = TheHost().RunCommand(OwnMenus()[0].items[0].macro);
    EXPECT_EQ(answer, CellValue(host::CellError{xlerrValue}));
    EXPECT_THAT(Host().wizard_openings, ElementsAre(u"=Metrify()"));
    EXPECT_EQ(Host().results.marked, Host().results.given_back);
}

// ---- The ribbon's callback

TEST_P(CMetrifyAppTest, the_ribbons_callback_is_a_command_under_the_add_ins_name) {
    const CRibbonEventRegistrar registrar;
    Open();
    const auto answer = TheHost().RunCommand(u"Metrify.RibbonCallback",
                                             {8.0, u"id", u"tag", 1.0, u"text", u"selected", true});
    EXPECT_EQ(answer, CellValue(-1.0));
    EXPECT_FALSE(IsRegistered(u"RibbonCallback"));
    app->events.DetachAll();
}

// ---- An observed event of the host

TEST_P(CMetrifyAppTest, an_event_of_the_host_reaches_an_observer_whose_cancellation_is_returned) {
    KeepingObserver observer;
    Open();
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect"));
    XlHostObject keep{u"Keep.xls"};
    XlHostObject other{u"Other.xls"};
    EXPECT_TRUE(app->OnWorkbookBeforeClose(&keep));
    EXPECT_FALSE(app->OnWorkbookBeforeClose(&other));
    EXPECT_THAT(observer.closing, ElementsAre("Keep.xls", "Other.xls"));
    ASSERT_EQ(integration.script.ran.size(), 2U);
    EXPECT_EQ(integration.script.ran[0], (std::vector<XlComValue>{u"xll_Metrify_observer", 11, u"Keep.xls"}));
    app->events.DetachAll();
}

TEST_P(CMetrifyAppTest, an_event_without_observers_is_not_delivered) {
    Open();
    XlHostObject keep{u"Keep.xls"};
    EXPECT_FALSE(app->OnWorkbookBeforeClose(&keep));
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_P(CMetrifyAppTest, the_observer_command_accepts_any_arguments_and_numbers) {
    KeepingObserver observer;
    Open();
    const CellValue no(false);
    for (const CellValue& number : {CellValue(-1.0), CellValue(13.0), CellValue(22.0), CellValue(1e9)})
        EXPECT_EQ(TheHost().RunCommand(u"xll_Metrify_observer", {number, u"Keep.xls"}), no);
    EXPECT_EQ(TheHost().RunCommand(u"xll_Metrify_observer", {11.0, host::CellError{xlerrNA}}), no);
    EXPECT_EQ(TheHost().RunCommand(u"xll_Metrify_observer", {11.0, true, 3.5, u"more"}), no);
    EXPECT_EQ(TheHost().RunCommand(u"xll_Metrify_observer", {11.0}), no);
    EXPECT_THAT(observer.closing, ElementsAre("", "TRUE", ""));
    EXPECT_EQ(TheHost().RunCommand(u"xll_Metrify_observer", {11.0, u"Keep.xls"}), CellValue(true));
    app->events.DetachAll();
}

// ---- Loads that fail

TEST_P(CMetrifyAppTest, an_observer_that_cancels_the_opening_leaves_nothing_registered_and_shows_no_alert) {
    OpenObserver observer;
    Open(0);
    EXPECT_THAT(Host().alerts, IsEmpty());
    EXPECT_TRUE(Host().registrations.All().empty());
    app->events.DetachAll();
}

TEST_P(CMetrifyAppTest, an_observer_that_throws_at_the_opening_is_reported_to_the_user) {
    OpenObserver observer;
    observer.throws = true;
    Open(0);
    EXPECT_EQ(Host().alerts, (std::vector<Alert>{{u"Unexpected error during initialization:\n"
                                                  u"observer failed\nMetrify will not be opened",
                                                  3, true}}));
    EXPECT_TRUE(Host().registrations.All().empty());
    app->events.DetachAll();
}

TEST_P(CMetrifyAppTest, automation_that_cannot_start_for_an_observer_is_reported_to_the_user) {
    const KeepingObserver observer;
    integration.script.starts = false;
    integration.script.failure = {u"No CXllApp instance found", 0};
    Open(0);
    EXPECT_EQ(Host().alerts, (std::vector<Alert>{{u"Unexpected error during initialization:\n"
                                                  u"No CXllApp instance found\nMetrify will not be opened",
                                                  3, true}}));
    app->events.DetachAll();
}

// A user who answers the question in the host's window.
class AnsweringWindows final : public WindowPlatform {
  public:
    explicit AnsweringWindows(bool says_yes) : says_yes_(says_yes) { ReplaceWindows(this); }
    AnsweringWindows(const AnsweringWindows&) = delete;
    AnsweringWindows& operator=(const AnsweringWindows&) = delete;
    ~AnsweringWindows() override { ReplaceWindows(nullptr); }

    WindowHandle FindWindowOfClass(const char* /*class_name*/, std::uint16_t /*low_bits*/) const override {
        return nullptr;
    }
    bool AskYesNo(WindowHandle /*owner*/, const std::u16string& text,
                  const std::u16string& /*title*/) const override {
        asked = text;
        return says_yes_;
    }

    mutable std::u16string asked;

  private:
    bool says_yes_;
};

TEST_P(CMetrifyAppTest, the_add_in_is_not_loaded_without_its_macro_if_the_user_declines) {
    const AnsweringWindows windows(false);
    module->entries.erase("Metrify_Macro_4");
    module->entries.erase("Metrify_Macro_12");
    Open(0);
    EXPECT_NE(windows.asked.find(u"Metrify_Macro\n"), std::u16string::npos);
    EXPECT_EQ(windows.asked.find(u"RibbonCallback"), std::u16string::npos);
    EXPECT_FALSE(IsRegistered(u"Metrify"));
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoRemove"), 1);
}

TEST_P(CMetrifyAppTest, the_add_in_is_loaded_without_the_function_if_the_user_agrees) {
    const AnsweringWindows windows(true);
    module->entries.erase("Metrify_Macro_4");
    module->entries.erase("Metrify_Macro_12");
    Open();
    EXPECT_TRUE(IsRegistered(u"Metrify"));
    EXPECT_FALSE(IsRegistered(u"Metrify_Macro"));
    EXPECT_EQ(TheHost().RunCommand(u"Metrify_Macro"), std::nullopt);
}

TEST_P(CMetrifyAppTest, a_missing_instance_is_reported_to_the_user) {
    CXllApp::SetInstance(nullptr);
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoOpen"), 0);
    EXPECT_EQ(Host().alerts, (std::vector<Alert>{{u"Unexpected error during initialization:\n"
                                                  u"No instance of CXllApp has been instantiated.\n"
                                                  u"Add-in will not be opened",
                                                  3, true}}));
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoClose"), 1);
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoAdd"), 0);
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoRemove"), 1);
}

TEST_P(CMetrifyAppTest, a_second_opening_is_refused_and_builds_no_second_menu) {
    Open();
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoOpen"), 0);
    EXPECT_EQ(OwnMenus().size(), 1U);
}

TEST_P(CMetrifyAppTest, an_opening_after_one_that_failed_builds_one_menu_with_one_item) {
    {
        OpenObserver observer;
        Open(0);
        app->events.DetachAll();
    }
    Open();
    const auto menus = OwnMenus();
    ASSERT_EQ(menus.size(), 1U);
    EXPECT_EQ(menus[0].name, u"Metrify");
    EXPECT_EQ(menus[0].items.size(), 1U);
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoClose"), 1);
    EXPECT_THAT(OwnMenus(), IsEmpty());
}

TEST_P(CMetrifyAppTest, building_the_menu_again_removes_the_one_of_before) {
    Open();
    EXPECT_EQ(app->OnOpen(), 1);
    const auto menus = OwnMenus();
    ASSERT_EQ(menus.size(), 1U);
    EXPECT_EQ(menus[0].items.size(), 1U);
}

TEST_P(CMetrifyAppTest, an_opening_after_one_without_events_registers_each_function_once) {
    const CRibbonEventRegistrar registrar;
    KeepingObserver observer;
    integration.script.connects = false;
    Open(0);
    EXPECT_FALSE(IsRegistered(u"Metrify"));
    EXPECT_FALSE(IsRegistered(u"Metrify_Macro"));
    integration.script.connects = true;
    EXPECT_EQ(TheHost().CallEntryPoint("xlAutoOpen"), 1);
    std::vector<std::u16string> names;
    for (const CXlFunctionDescriptor* descriptor : app->functions.All())
        names.push_back(descriptor->functionName);
    EXPECT_THAT(
        names, ElementsAre(u"Metrify.RibbonCallback", u"Metrify_Macro", u"Metrify", u"xll_Metrify_observer"));
    for (const std::u16string& name : names)
        EXPECT_TRUE(IsRegistered(name));
    EXPECT_EQ(OwnMenus().size(), 1U);
    XlHostObject book{u"Other.xls"};
    app->OnWorkbookBeforeClose(&book);
    EXPECT_THAT(observer.closing, ElementsAre("Other.xls")) << "notified once";
    app->events.DetachAll();
}

INSTANTIATE_TEST_SUITE_P(versions, CMetrifyAppTest, testing::Values(11, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

} // namespace
} // namespace metrify
