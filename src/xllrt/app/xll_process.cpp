// Load and unload of the module.

#include "xllrt/app/xll_app.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/fault/fault_handlers.h"
#include "xllrt/platform/module_handle.h"
#include "xllrt/value/thread_state.h"

namespace metrify {

namespace {

// Above 0 during a call: the entry point may be called recursively. The loader serialises threads.
constinit int entry_depth = 0;

bool ChangeThreadStates(ProcessReason reason) {
    switch (reason) {
    case ProcessReason::attach:
        return AllocateThreadStates();
    case ProcessReason::detach:
        ReleaseThreadStates();
        return true;
    case ProcessReason::thread_detach:
        DestroyThreadState();
        return true;
    default:
        return true;
    }
}

int Enter(void* module, ProcessReason reason) {
    CXllApp* const application = CXllApp::Instance();
    if (reason == ProcessReason::detach) {
        if (application)
            application->OnProcessDetach();
        KeepModuleHandle(nullptr);
        RestoreFaultHandlers();
    }
    if (!ChangeThreadStates(reason))
        return 0;
    if (reason != ProcessReason::attach)
        return 1;
    KeepModuleHandle(module);
    return application ? application->OnProcessAttach() : 1;
}

} // namespace

int ProcessEntry(void* module, ProcessReason reason) {
    if (entry_depth > 0)
        return 1;
    ++entry_depth;
    const int result = Enter(module, reason);
    --entry_depth;
    return result;
}

} // namespace metrify
