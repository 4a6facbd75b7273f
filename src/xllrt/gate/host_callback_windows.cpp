#include "xllrt/gate/host_primitives.h"

#include <windows.h>

namespace metrify {

Excel12Entry FindHostCallback() {
    static const HMODULE host = GetModuleHandleA(nullptr);
    return reinterpret_cast<Excel12Entry>(reinterpret_cast<void*>(GetProcAddress(host, "MdCallBack12")));
}

} // namespace metrify
