#include "integration/com/kept_module.h"

#include <windows.h>

namespace metrify {

void KeepModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&KeepModule), &module);
}

} // namespace metrify
