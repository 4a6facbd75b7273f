// A host that closes the add-in while the add-in handles one of its events.

#include "recording_integration.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/app/observer_function.h"

#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::ElementsAre;

// Acts when a workbook is about to be closed, and keeps the workbook open.
class ActingObserver final : public CXlEventStaticObserver<CXlWorkbookBeforeCloseEvent> {
  public:
    void Notify(CXlBeforeCloseEventArgs& args) override {
        act();
        args.cancel = true;
    }
    std::function<void()> act = [] {};
};

class CloseDuringEventTest : public AddInTest {
  protected:
    CloseDuringEventTest() {
        EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::attach), 1);
        EXPECT_EQ(OpenAddIn(), 1);
        host.TakeCalls();
        integration.script.calls.clear();
        // The host runs the observer function.
        integration.script.run = [this](std::span<const XlComValue> values, CXlOper& answer) {
            CXlOper name;
            name.SetText(std::get<std::u16string>(values[2]));
            answer.SetBool(0);
            DispatchEvent(app, answer, std::get<std::int32_t>(values[1]), name, CXlOper());
            integration.script.calls.emplace_back("returned");
            return true;
        };
    }
    ~CloseDuringEventTest() override {
        ProcessEntry(nullptr, ProcessReason::detach);
        AllocateThreadStates(); // as before the test
    }

    bool Raise() { return app.OnWorkbookBeforeClose(&book); }

    RecordingIntegration integration;
    RecordingApp app{host, integration};
    ActingObserver observer;
    XlHostObject book{u"Book1"};
};

TEST_F(CloseDuringEventTest, the_event_is_answered_and_the_module_stays_loaded) {
    int closed = 0;
    observer.act = [&closed] { closed = CloseAddIn(); };
    EXPECT_TRUE(Raise());
    EXPECT_EQ(closed, 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnClose"));
    EXPECT_THAT(integration.script.calls, ElementsAre("run", "keep module", "returned"));
}

TEST_F(CloseDuringEventTest, a_module_closed_after_the_event_need_not_stay) {
    EXPECT_TRUE(Raise());
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(integration.script.calls, ElementsAre("run", "returned"));
}

TEST_F(CloseDuringEventTest, after_an_event_that_failed_neither) {
    observer.act = [] { throw CXlRuntimeException(std::string("no")); };
    EXPECT_THROW(Raise(), CXlRuntimeException);
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(integration.script.calls, ElementsAre("run"));
}

TEST_F(CloseDuringEventTest, the_automation_is_released_when_the_event_has_returned) {
    observer.act = [] {
        CloseAddIn();
        ProcessEntry(nullptr, ProcessReason::detach);
    };
    EXPECT_TRUE(Raise());
    EXPECT_THAT(integration.script.calls, ElementsAre("run", "keep module", "returned", "end"));
    EXPECT_FALSE(Raise()) << "its observers are detached";
}

TEST_F(CloseDuringEventTest, a_second_close_and_a_second_unloading_change_nothing) {
    observer.act = [] {
        CloseAddIn();
        CloseAddIn();
        ProcessEntry(nullptr, ProcessReason::detach);
        ProcessEntry(nullptr, ProcessReason::detach);
    };
    EXPECT_TRUE(Raise());
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::detach), 1);
    EXPECT_EQ(integration.script.calls.back(), "end");
    EXPECT_EQ(std::count(integration.script.calls.begin(), integration.script.calls.end(), "end"), 1);
}

TEST_F(CloseDuringEventTest, an_observer_of_the_closing_may_unload) {
    class UnloadingObserver final : public CXlEventObserver<CXlEventArgs> {
      public:
        void Notify(CXlEventArgs& /*args*/) override { ProcessEntry(nullptr, ProcessReason::detach); }
    };
    UnloadingObserver unloading;
    app.events.close.AddObserver(&unloading);
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnProcessDetach", "OnClose"));
    app.events.close.RemoveObserver(&unloading);
}

} // namespace
} // namespace metrify
