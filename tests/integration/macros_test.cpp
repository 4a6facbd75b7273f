// Macros, properties and addresses by automation.

#include "integration/event_call.h"
#include "tests/integration/integration_host.h"

namespace metrify::host {
namespace {

// What the macro of the test saw when it ran.
struct Seen {
    IntegrationHost* host = nullptr;
    int runs = 0;
    bool alerts = true;
    double first = 0.0;
    double second = 0.0;
} seen;

std::int32_t METRIFY_HOST_CALL LookAround() {
    ++seen.runs;
    seen.alerts = seen.host->settings().displayAlerts;
    return 1;
}

double METRIFY_HOST_CALL TakeTwo(double first, double second) {
    seen.first = first;
    seen.second = second;
    return first - second;
}

class macros : public testing::Test {
  protected:
    static std::map<std::string, void*> Entries() {
        auto entries = AddInEntries();
        entries["LookAround"] = EntryOf(LookAround);
        entries["TakeTwo"] = EntryOf(TakeTwo);
        return entries;
    }

    macros() : host(16, Entries()) {
        seen = {.host = &host};
        EXPECT_TRUE(road.Init());
        RegisterEntry(host.host, u"LookAround", u"J", u"LookAround", 2.0);
        RegisterEntry(host.host, u"TakeTwo", u"BBB", u"TakeTwo");
    }

    HRESULT RunText(std::u16string_view text) { return road.com.RunMacroByText(text, answer); }
    HRESULT RunName(const std::vector<ComVariant>& arguments) {
        return road.com.RunMacroByName(arguments, answer);
    }

    IntegrationHost host;
    CXllApp application;
    Road road;
    ComVariant answer;
};

TEST_F(macros, run_by_a_text) {
    EXPECT_EQ(RunText(u"TakeTwo(5,3)"), S_OK);
    ASSERT_EQ(answer.Type(), VT_R8);
    EXPECT_EQ(V_R8(&answer.Get()), 2.0);
}

TEST_F(macros, run_by_a_name_with_the_arguments_in_their_order) {
    EXPECT_EQ(RunName({ComVariant(u"TakeTwo"), ComVariant(std::int32_t{5}), ComVariant(std::int32_t{3})}),
              S_OK);
    EXPECT_EQ(seen.first, 5.0);
    EXPECT_EQ(seen.second, 3.0);
    ASSERT_EQ(answer.Type(), VT_R8);
    EXPECT_EQ(V_R8(&answer.Get()), 2.0);
}

TEST_F(macros, that_fail_give_the_code_of_the_host) {
    EXPECT_EQ(RunText(u"NoSuchMacro()"), DISP_E_EXCEPTION);
    EXPECT_EQ(RunName({ComVariant(u"NoSuchMacro")}), DISP_E_EXCEPTION);
}

TEST_F(macros, run_with_the_alerts_off_and_on_again_behind) {
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
    seen.alerts = true;
    EXPECT_EQ(RunName({ComVariant(u"LookAround")}), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
    EXPECT_EQ(seen.runs, 2);
}

TEST_F(macros, that_fail_leave_the_alerts_on) {
    EXPECT_TRUE(FAILED(RunText(u"NoSuchMacro()")));
    EXPECT_TRUE(host.settings().displayAlerts);
}

TEST_F(macros, leave_alerts_that_are_off_as_they_are) {
    host.settings().displayAlerts = false;
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_FALSE(host.settings().displayAlerts);
}

TEST_F(macros, take_the_setting_of_the_alerts_also_as_a_number) {
    host.settings().areAlertsANumber = true;
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
}

TEST_F(macros, need_a_host) {
    road.com.Shutdown();
    EXPECT_EQ(RunText(u"LookAround()"), E_POINTER);
    EXPECT_EQ(RunName({ComVariant(u"LookAround")}), E_POINTER);
}

// ---- Properties

TEST_F(macros, active_worksheet_is_that_of_the_host) {
    const ComVariant sheet = host.Sheet();
    host.settings().activeWorksheet = sheet.Object();
    ComPtr<IDispatch> active;
    EXPECT_EQ(road.com.ActiveWorksheet(active), S_OK);
    EXPECT_EQ(active.Get(), sheet.Object().Get());
}

TEST_F(macros, names_are_those_of_workbook_and_worksheet) {
    std::u16string name;
    EXPECT_EQ(ObjectName(host.Workbook().Object().Get(), name), S_OK);
    EXPECT_EQ(name, u"Book1");
    EXPECT_EQ(ObjectName(host.Sheet().Object().Get(), name), S_OK);
    EXPECT_EQ(name, u"Sheet1");
}

// ---- Addresses

TEST_F(macros, range_address_is_plain) {
    std::u16string text;
    EXPECT_EQ(RangeAddress(host.Range().Object().Get(), text, false), S_OK);
    EXPECT_EQ(text, u"$A$1");
}

TEST_F(macros, range_address_has_workbook_and_sheet_in_front) {
    std::u16string text;
    EXPECT_EQ(RangeAddress(host.Range().Object().Get(), text, true), S_OK);
    EXPECT_EQ(text, u"[Book1]Sheet1!$A$1");
}

TEST_F(macros, range_address_is_completed_where_the_host_leaves_the_place_away) {
    const auto range =
        host.automation.MakeRange(host.automation.MakeWorksheet(u"My Book", u"My Sheet"), {u"$B$2", u"$B$2"});
    std::u16string text;
    EXPECT_EQ(RangeAddress(range.Get(), text, true), S_OK);
    EXPECT_EQ(text, u"[My Book]My Sheet!$B$2");
}

TEST_F(macros, range_address_of_something_else_leaves_the_text) {
    std::u16string text = u"as it was";
    EXPECT_EQ(RangeAddress(host.Workbook().Object().Get(), text, true), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(text, u"as it was");
}

// ---- The calls that events lead to

TEST_F(macros, event_call_has_target_number_and_descriptions) {
    const auto book = host.Workbook().Object();
    const auto sheet = host.Sheet().Object();
    const XlEventArgument given[] = {AsHostObject(book.Get()), AsHostObject(sheet.Get()), true};
    const XlEventCall call{
        .target = u"observer", .number = 14, .signature = "BSF", .arguments = given};
    EXPECT_EQ(EventMacroText(call), u"observer(14,\"Book1\",\"[Book1]Sheet1\",TRUE)");
    const auto arguments = EventArguments(call);
    ASSERT_EQ(arguments.size(), 5U);
    EXPECT_EQ(arguments[0].Text(), u"observer");
    EXPECT_EQ(V_I4(&arguments[1].Get()), 14);
    EXPECT_EQ(arguments[3].Text(), u"[Book1]Sheet1");
    EXPECT_EQ(arguments[4].Type(), VT_BOOL);
}

TEST_F(macros, event_call_of_a_handler_has_no_number) {
    const XlEventArgument given[] = {false};
    const XlEventCall call{.target = u"handler", .number = {}, .signature = "F", .arguments = given};
    EXPECT_EQ(EventMacroText(call), u"handler(FALSE)");
    EXPECT_EQ(EventMacroText({.target = u"handler", .number = {}, .signature = "", .arguments = {}}),
              u"handler()");
}

TEST_F(macros, event_call_keeps_an_object_that_cannot_be_described_empty) {
    const auto book = host.Workbook().Object();
    const XlEventArgument given[] = {AsHostObject(book.Get()), static_cast<XlHostObject*>(nullptr),
                                     AsHostObject(book.Get())};
    const XlEventCall call{.target = u"handler", .number = {}, .signature = "RSB", .arguments = given};
    EXPECT_EQ(EventMacroText(call), u"handler(\"\",\"\",\"Book1\")");
}

TEST_F(macros, event_call_can_run_by_a_text) {
    const XlEventCall call{.target = u"LookAround", .number = {}, .signature = "", .arguments = {}};
    CXlOper result;
    host.host.state().log.Start();
    SetEventsRunByText(true);
    EXPECT_TRUE(RunEventCall(call, result));
    SetEventsRunByText(false);
    EXPECT_EQ(seen.runs, 1);
    EXPECT_EQ(result.ToNumber(), 1.0);
}

TEST_F(macros, event_call_without_a_road_to_the_host_fails) {
    road.com.Shutdown();
    const XlEventCall call{.target = u"LookAround", .number = {}, .signature = "", .arguments = {}};
    CXlOper result;
    EXPECT_FALSE(RunEventCall(call, result));
}

} // namespace
} // namespace metrify::host
