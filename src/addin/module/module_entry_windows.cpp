#include "xllrt/host_primitives.h"
#include "xllrt/xll_lifecycle.h"

#include <windows.h>

// The loader's way in.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    const auto told = static_cast<metrify::ProcessReason>(reason);
    if (told == metrify::ProcessReason::attach)
        metrify::ConnectImportedHost();
    return metrify::ProcessEntry(instance, told) != 0 ? TRUE : FALSE;
}
