#pragma once

// An application in a scripted host. Its virtual operations record their calls in the host's call list.

#include "tests/xllrt/gate/scripted_host.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/fault/fault_handlers.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/thread_state.h"

#include <gtest/gtest.h>

namespace metrify {

/// Restores the state of the process after a test.
class AddInTest : public testing::Test {
  protected:
    AddInTest() : earlier_(CXllApp::Instance()) {
        AllocateThreadStates();
        CXllApp::SetInstance(nullptr);
        SetAddInOpened(false);
    }
    ~AddInTest() override {
        SetAddInOpened(false);
        RestoreFaultHandlers();
        CXllApp::SetInstance(earlier_);
        // Created in the record family of this test's host.
        DestroyThreadState();
    }

    ScriptedHost host;

  private:
    CXllApp* earlier_;
};

class RecordingApp : public CXllApp {
  public:
    explicit RecordingApp(ScriptedHost& host, const CXlIntegration& integration = NoIntegration())
        : CXllApp(integration), host_(host) {
        addInName.Assign("Recording");
    }

    void OnAutoAdd() override { host_.Note("OnAutoAdd"); }
    int AutoAddResult() override { return add_result; }
    void OnAutoRemove() override { host_.Note("OnAutoRemove"); }
    void OnBeforeOpen() override { host_.Note("OnBeforeOpen"); }
    int OnOpen() override {
        host_.Note("OnOpen");
        return open_result;
    }
    void OnClose() override { host_.Note("OnClose"); }
    void OnOpened() override { host_.Note("OnOpened"); }
    int OnProcessAttach() override {
        host_.Note("OnProcessAttach");
        return attach_result != 0 ? CXllApp::OnProcessAttach() : 0;
    }
    int OnProcessDetach() override {
        host_.Note("OnProcessDetach");
        return CXllApp::OnProcessDetach();
    }

    int add_result = 1;
    int open_result = 1;
    int attach_result = 1;

  private:
    ScriptedHost& host_;
};

/// A worksheet function of one number, for both record families.
inline CXlFunctionDescriptor SimpleFunction(const std::u16string& name) {
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = name;
    descriptor.narrow.entry = "Entry4";
    descriptor.wide.entry = "Entry12";
    descriptor.narrow.type = "RB";
    descriptor.wide.type = "UB";
    descriptor.narrow.argumentNames = "Val";
    descriptor.wide.argumentNames = u"Val";
    descriptor.narrow.category = "Category";
    descriptor.wide.category = u"Category";
    descriptor.narrow.description = "Describes";
    descriptor.wide.description = u"Describes";
    descriptor.narrow.argumentHelp = {"The value"};
    descriptor.wide.argumentHelp = {u"The value"};
    return descriptor;
}

} // namespace metrify
