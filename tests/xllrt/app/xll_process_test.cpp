// What the module's entry point does before and after it notifies the application.

#include "add_in_fixture.h"
#include "tests/xllrt/event/recording_integration.h"
#include "xllrt/platform/module_handle.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

// Records the state of the module at each notification.
class ProcessApp final : public CXllApp {
  public:
    int OnProcessAttach() override {
        Note("attach");
        return 1;
    }
    int OnProcessDetach() override {
        Note("detach");
        return 1;
    }

    std::vector<std::string> notified;

  private:
    void Note(const char* what) {
        // Throws if there is no slot for it.
        ThisThreadState().staticResult.SetNumber(1.0);
        DestroyThreadState();
        notified.emplace_back(what).append(ModuleHandle() == this ? " with the handle"
                                                                  : " without the handle");
    }
};

class ProcessTest : public AddInTest {
  protected:
    ProcessTest() {
        DestroyThreadState();
        ReleaseThreadStates();
    }
    ~ProcessTest() override { AllocateThreadStates(); }

    ProcessApp app;
};

TEST_F(ProcessTest, the_application_has_handle_and_thread_states_from_attach_to_the_end_of_detach) {
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 1);
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::detach), 1);
    EXPECT_THAT(app.notified, ElementsAre("attach with the handle", "detach with the handle"));
    EXPECT_EQ(ModuleHandle(), nullptr);
}

TEST_F(ProcessTest, a_detach_frees_the_slot_of_the_thread_states) {
    ProcessEntry(&app, ProcessReason::attach);
    ProcessEntry(&app, ProcessReason::detach);
    EXPECT_THROW(ThisThreadState(), std::bad_alloc);
}

TEST_F(ProcessTest, thread_starts_and_ends_do_not_notify_the_application_and_keep_the_handle) {
    ProcessEntry(&app, ProcessReason::attach);
    app.notified.clear();
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::thread_attach), 1);
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::thread_detach), 1);
    EXPECT_TRUE(app.notified.empty());
    EXPECT_EQ(ModuleHandle(), &app);
}

TEST_F(AddInTest, a_refused_attach_leaves_the_entry_open) {
    RecordingApp app(host);
    app.attach_result = 0;
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 0);
    app.attach_result = 1;
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnProcessAttach", "OnProcessAttach"));
}

TEST_F(AddInTest, a_detach_ends_the_automation_that_events_have_started) {
    const RecordingIntegration integration;
    RecordingApp app(host, integration);
    app.EnableEvent(8, true);
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect"));
    app.OnProcessDetach();
    EXPECT_THAT(integration.script.calls, ElementsAre("start", "connect", "end"));
}

} // namespace
