#include "integration/process_end.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"

#include <windows.h>

// Called by the loader. At a detach, `reserved` tells the end of the whole process from the unloading of this
// module.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    const auto told = static_cast<metrify::ProcessReason>(reason);
    if (told == metrify::ProcessReason::detach && reserved) {
        metrify::AbandonHost();
        return TRUE;
    }
    if (told == metrify::ProcessReason::attach)
        metrify::ConnectImportedHost();
    return metrify::ProcessEntry(instance, told) != 0 ? TRUE : FALSE;
}
