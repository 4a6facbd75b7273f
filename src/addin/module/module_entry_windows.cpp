#include "integration/process_end.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"

#include <windows.h>

// Called by the loader. At a detach, `reserved` is set if the whole process ends and null if only this module
// is unloaded.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    const auto event = static_cast<metrify::ProcessReason>(reason);
    if (event == metrify::ProcessReason::detach && reserved) {
        metrify::AbandonHost();
        return TRUE;
    }
    if (event == metrify::ProcessReason::attach)
        metrify::ConnectImportedHost();
    return metrify::ProcessEntry(instance, event) != 0 ? TRUE : FALSE;
}
