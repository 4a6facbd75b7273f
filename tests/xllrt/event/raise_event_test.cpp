// Events of the host: switching on, raising, and the call of the handler.

#include "recording_integration.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/event/event_call.h"

#include <functional>
#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Values = std::vector<XlComValue>;

class RaisingTest : public testing::Test {
  protected:
    RaisingTest() { app.observerFunctionName = u"xll_Test_observer"; }
    ~RaisingTest() override { RunEventCallsAsText(false); }

    // Removes and returns the only recorded call.
    Values TakeRan() {
        EXPECT_EQ(integration.script.ran.size(), 1U);
        Values values;
        if (!integration.script.ran.empty())
            values = integration.script.ran.front();
        integration.script.ran.clear();
        return values;
    }

    void SwitchOnAll() { app.eventSwitches.fill(true); }

    void Answer(std::function<void(CXlOper&)> answer) {
        integration.script.run = [answer = std::move(answer)](std::span<const XlComValue>, CXlOper& result) {
            answer(result);
            return true;
        };
    }

    RecordingIntegration integration;
    CXllApp app{integration};
    XlHostObject book{u"Book1"};
    XlHostObject sheet{u"Book1!Sheet1"};
    XlHostObject range{u"$A$1"};
    XlHostObject nameless{u""};
};

class SelectionObserver final : public CXlEventObserver<CXlRangeEventArgs> {
  public:
    void Notify(CXlRangeEventArgs& /*args*/) override {}
};

// ---- Switching events on and off

TEST_F(RaisingTest, without_observers_of_host_events_the_automation_is_not_started) {
    app.events.AttachEarly();
    app.events.AttachRest();
    app.events.DetachAll();
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, the_first_observer_starts_the_automation_connects_and_switches_the_event_on) {
    SelectionObserver observer;
    app.events.selectionChange.AddObserver(&observer);
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect"));
    for (std::size_t number = 0; number < kEventCount; ++number)
        EXPECT_EQ(app.eventSwitches[number], number == 1) << number;
}

TEST_F(RaisingTest, a_second_observer_does_not_enable_the_event_again) {
    SelectionObserver first;
    SelectionObserver second;
    app.events.selectionChange.AddObserver(&first);
    integration.script.calls.clear();
    app.events.selectionChange.AddObserver(&second);
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, the_event_stays_on_until_the_last_observer_is_removed_and_the_connection_stays) {
    SelectionObserver first;
    SelectionObserver second;
    app.events.selectionChange.AddObserver(&first);
    app.events.selectionChange.AddObserver(&second);
    app.events.selectionChange.RemoveObserver(&first);
    EXPECT_TRUE(app.eventSwitches[1]);
    integration.script.calls.clear();
    app.events.selectionChange.RemoveObserver(&second);
    EXPECT_FALSE(app.eventSwitches[1]);
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, a_second_event_connects_through_the_same_automation) {
    app.EnableEvent(4, true);
    app.EnableEvent(5, true);
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect", "connect"));
}

TEST_F(RaisingTest, switching_off_an_event_that_never_was_on_needs_no_automation) {
    app.EnableEvent(4, false);
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, process_detach_releases_the_automation) {
    app.EnableEvent(4, true);
    app.OnProcessDetach();
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect", "end"));
}

TEST_F(RaisingTest, an_automation_that_does_not_start_is_released_and_its_text_and_code_are_thrown) {
    integration.script.starts = false;
    integration.script.failure = {u"CoInitialize", 0x80010106};
    try {
        app.EnableEvent(4, true);
        FAIL() << "nothing thrown";
    } catch (const CXlComException& exception) {
        EXPECT_EQ(exception.Call(), u"CoInitialize");
        EXPECT_EQ(exception.Code(), 0x80010106U);
    }
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "end"));
    EXPECT_FALSE(app.eventSwitches[4]);
}

TEST_F(RaisingTest, an_automation_that_does_not_start_without_a_failure_code_throws_its_text_alone) {
    integration.script.starts = false;
    integration.script.failure = {u"No CXllApp instance found", 0};
    try {
        app.EnableEvent(4, true);
        FAIL() << "nothing thrown";
    } catch (const CXlComException& exception) {
        EXPECT_EQ(exception.WideMessage(), u"No CXllApp instance found");
        EXPECT_EQ(exception.Code(), 0U);
    }
}

TEST_F(RaisingTest, an_automation_that_did_not_start_is_tried_again) {
    integration.script.starts = false;
    EXPECT_THROW(app.EnableEvent(4, true), CXlComException);
    integration.script.starts = true;
    app.EnableEvent(4, true);
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "end", "start", "connect"));
}

TEST_F(RaisingTest, a_connection_that_is_not_confirmed_throws_and_leaves_the_event_off) {
    integration.script.connects = false;
    integration.script.failure = {u"AtlAdvise", 0x80004002};
    try {
        app.EnableEvent(4, true);
        FAIL() << "nothing thrown";
    } catch (const CXlComException& exception) {
        EXPECT_EQ(exception.Call(), u"AtlAdvise");
        EXPECT_EQ(exception.Code(), 0x80004002U);
    }
    EXPECT_FALSE(app.eventSwitches[4]);
}

// ---- Choice of the handler

TEST_F(RaisingTest, an_event_that_is_off_and_has_no_macro_is_answered_without_a_call) {
    EXPECT_FALSE(app.OnSheetActivate(&sheet));
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, an_event_that_is_on_reaches_the_observer_function_with_its_number) {
    app.EnableEvent(4, true);
    app.OnSheetActivate(&sheet);
    EXPECT_EQ(TakeRan(), (Values{u"xll_Test_observer", 4, u"[Book1]Sheet1"}));
}

TEST_F(RaisingTest, an_event_that_is_on_calls_nothing_without_an_observer_function) {
    app.EnableEvent(4, true);
    app.observerFunctionName.clear();
    EXPECT_FALSE(app.OnSheetActivate(&sheet));
    EXPECT_THAT(integration.script.ran, IsEmpty());
}

TEST_F(RaisingTest, a_macro_set_for_an_event_is_called_without_the_number_though_the_event_is_off) {
    app.eventHandlers[4] = "MyMacro";
    app.OnSheetActivate(&sheet);
    EXPECT_EQ(TakeRan(), (Values{u"MyMacro", u"[Book1]Sheet1"}));
}

TEST_F(RaisingTest, a_macro_set_for_an_event_takes_precedence_over_the_observer_function) {
    app.EnableEvent(4, true);
    app.eventHandlers[4] = "MyMacro";
    app.OnSheetActivate(&sheet);
    EXPECT_EQ(TakeRan(), (Values{u"MyMacro", u"[Book1]Sheet1"}));
}

TEST_F(RaisingTest, event_13_reaches_the_macro_set_for_it_though_it_has_no_event_object) {
    app.eventHandlers[13] = "BeforePrint";
    Answer([](CXlOper& answer) { answer.SetBool(1); });
    EXPECT_TRUE(app.OnWorkbookEvent13(&book));
    EXPECT_EQ(TakeRan(), (Values{u"BeforePrint", u"Book1"}));
}

TEST_F(RaisingTest, numbers_outside_the_table_call_nothing) {
    SwitchOnAll();
    EXPECT_FALSE(app.RaiseEvent(22, true, "B", {&book}));
    EXPECT_FALSE(app.RaiseEvent(-1, true, "B", {&book}));
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, events_17_to_19_raise_nothing) {
    SwitchOnAll();
    for (const std::size_t number : {17U, 18U, 19U})
        app.eventHandlers[number] = "Macro";
    app.OnReservedEvent17();
    app.OnReservedEvent18();
    app.OnReservedEvent19();
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(RaisingTest, an_automation_that_does_not_start_answers_false) {
    integration.script.starts = false;
    app.eventHandlers[13] = "BeforePrint";
    EXPECT_FALSE(app.OnWorkbookEvent13(&book));
}

// ---- The signature of each event

struct RaisedEvent {
    int number;
    bool is_cancellable;
    std::function<bool(CXllApp&, XlHostObject*, XlHostObject*, XlHostObject*)> raise;
    Values arguments;
};

void PrintTo(const RaisedEvent& event, std::ostream* out) {
    *out << event.number;
}

class RaisedEventTest : public RaisingTest, public testing::WithParamInterface<RaisedEvent> {};

TEST_P(RaisedEventTest, is_described_by_its_signature) {
    SwitchOnAll();
    GetParam().raise(app, &book, &sheet, &range);
    Values expected{u"xll_Test_observer", GetParam().number};
    expected.insert(expected.end(), GetParam().arguments.begin(), GetParam().arguments.end());
    EXPECT_EQ(TakeRan(), expected);
}

TEST_P(RaisedEventTest, has_an_answer_only_if_it_can_be_cancelled) {
    SwitchOnAll();
    Answer([](CXlOper& answer) { answer.SetBool(1); });
    EXPECT_EQ(GetParam().raise(app, &book, &sheet, &range), GetParam().is_cancellable);
    Answer([](CXlOper& answer) { answer.SetBool(0); });
    EXPECT_FALSE(GetParam().raise(app, &book, &sheet, &range));
}

using App = CXllApp;
using Object = XlHostObject*;

INSTANTIATE_TEST_SUITE_P(
    events, RaisedEventTest,
    testing::Values(
        RaisedEvent{
            0, false, [](App& a, Object b, Object, Object) { return a.OnNewWorkbook(b); }, {u"Book1"}},
        RaisedEvent{1,
                    false,
                    [](App& a, Object, Object s, Object r) { return a.OnSelectionChange(s, r); },
                    {u"[Book1]Sheet1", u"$A$1"}},
        RaisedEvent{2,
                    true,
                    [](App& a, Object, Object s, Object r) { return a.OnBeforeDoubleClick(s, r); },
                    {u"[Book1]Sheet1", u"$A$1"}},
        RaisedEvent{3,
                    true,
                    [](App& a, Object, Object s, Object r) { return a.OnBeforeRightClick(s, r); },
                    {u"[Book1]Sheet1", u"$A$1"}},
        RaisedEvent{4,
                    false,
                    [](App& a, Object, Object s, Object) { return a.OnSheetActivate(s); },
                    {u"[Book1]Sheet1"}},
        RaisedEvent{5,
                    false,
                    [](App& a, Object, Object s, Object) { return a.OnSheetDeactivate(s); },
                    {u"[Book1]Sheet1"}},
        RaisedEvent{
            6, false, [](App& a, Object, Object s, Object) { return a.OnCalculate(s); }, {u"[Book1]Sheet1"}},
        RaisedEvent{7,
                    false,
                    [](App& a, Object, Object s, Object r) { return a.OnSheetChange(s, r); },
                    {u"[Book1]Sheet1", u"$A$1"}},
        RaisedEvent{
            8, false, [](App& a, Object b, Object, Object) { return a.OnWorkbookOpen(b); }, {u"Book1"}},
        RaisedEvent{
            9, false, [](App& a, Object b, Object, Object) { return a.OnWorkbookActivate(b); }, {u"Book1"}},
        RaisedEvent{10,
                    false,
                    [](App& a, Object b, Object, Object) { return a.OnWorkbookDeactivate(b); },
                    {u"Book1"}},
        RaisedEvent{11,
                    true,
                    [](App& a, Object b, Object, Object) { return a.OnWorkbookBeforeClose(b); },
                    {u"Book1"}},
        RaisedEvent{12,
                    true,
                    [](App& a, Object b, Object, Object) { return a.OnWorkbookBeforeSave(b, true); },
                    {u"Book1", true}},
        RaisedEvent{
            13, true, [](App& a, Object b, Object, Object) { return a.OnWorkbookEvent13(b); }, {u"Book1"}},
        RaisedEvent{14,
                    false,
                    [](App& a, Object b, Object s, Object) { return a.OnWorkbookNewSheet(b, s); },
                    {u"Book1", u"[Book1]Sheet1"}},
        RaisedEvent{
            15, false, [](App& a, Object b, Object, Object) { return a.OnWorkbookEvent15(b); }, {u"Book1"}},
        RaisedEvent{
            16, false, [](App& a, Object b, Object, Object) { return a.OnWorkbookEvent16(b); }, {u"Book1"}},
        RaisedEvent{20, false, [](App& a, Object, Object, Object) { return a.OnAfterCalculate(); }, {}},
        RaisedEvent{21,
                    false,
                    [](App& a, Object b, Object, Object) { return a.OnWorkbookAfterSave(b, false); },
                    {u"Book1", false}}),
    [](const auto& event) { return "number_" + std::to_string(event.param.number); });

// ---- Arguments and answers

TEST_F(RaisingTest, what_cannot_be_described_stays_empty_and_the_rest_is_built) {
    SwitchOnAll();
    app.OnSelectionChange(&nameless, &range);
    EXPECT_EQ(TakeRan(), (Values{u"xll_Test_observer", 1, {}, u"$A$1"}));
    app.OnSelectionChange(&sheet, &nameless);
    EXPECT_EQ(TakeRan(), (Values{u"xll_Test_observer", 1, u"[Book1]Sheet1", {}}));
    app.OnWorkbookBeforeSave(&nameless, true);
    EXPECT_EQ(TakeRan(), (Values{u"xll_Test_observer", 12, {}, true}));
}

TEST_F(RaisingTest, a_macro_that_cannot_be_run_answers_false) {
    SwitchOnAll();
    integration.script.run = [](std::span<const XlComValue>, CXlOper& answer) {
        answer.SetBool(1);
        return false;
    };
    EXPECT_FALSE(app.OnWorkbookBeforeClose(&book));
}

TEST_F(RaisingTest, an_answer_that_is_no_boolean_is_turned_into_one) {
    SwitchOnAll();
    Answer([](CXlOper& answer) { answer.SetNumber(-1.0); });
    EXPECT_TRUE(app.OnWorkbookBeforeClose(&book));
    Answer([](CXlOper& answer) { answer.SetText("true"); });
    EXPECT_TRUE(app.OnWorkbookBeforeClose(&book));
    Answer([](CXlOper& answer) { answer.SetNumber(0.0); });
    EXPECT_FALSE(app.OnWorkbookBeforeClose(&book));
}

TEST_F(RaisingTest, an_answer_that_cannot_be_turned_into_a_boolean_is_false) {
    SwitchOnAll();
    Answer([](CXlOper& answer) { answer.SetText("perhaps"); });
    EXPECT_FALSE(app.OnWorkbookBeforeClose(&book));
    Answer([](CXlOper& answer) { answer.SetError(xlerrValue); });
    EXPECT_FALSE(app.OnWorkbookBeforeClose(&book));
    Answer([](CXlOper&) {});
    EXPECT_FALSE(app.OnWorkbookBeforeClose(&book));
}

// ---- Calls as text

TEST_F(RaisingTest, in_a_text_call_names_are_quoted_and_the_number_and_flags_are_not) {
    RunEventCallsAsText(true);
    SwitchOnAll();
    Answer([](CXlOper& answer) { answer.SetBool(1); });
    EXPECT_TRUE(app.OnWorkbookBeforeSave(&book, true));
    app.OnWorkbookAfterSave(&book, false);
    app.OnBeforeDoubleClick(&sheet, &range);
    app.OnAfterCalculate();
    app.eventHandlers[20] = "Macro";
    app.OnAfterCalculate();
    EXPECT_THAT(integration.script.ran_as_text,
                ElementsAre(u"xll_Test_observer(12,\"Book1\",TRUE)", u"xll_Test_observer(21,\"Book1\",FALSE)",
                            u"xll_Test_observer(2,\"[Book1]Sheet1\",\"$A$1\")", u"xll_Test_observer(20)",
                            u"Macro()"));
    EXPECT_THAT(integration.script.ran, IsEmpty());
}

TEST_F(RaisingTest, by_text_what_cannot_be_described_is_left_out_between_its_commas) {
    RunEventCallsAsText(true);
    SwitchOnAll();
    app.OnSelectionChange(&nameless, &range);
    EXPECT_THAT(integration.script.ran_as_text, ElementsAre(u"xll_Test_observer(1,,\"$A$1\")"));
}

} // namespace
} // namespace metrify
