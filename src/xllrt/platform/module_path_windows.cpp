#include "xllrt/platform/module_handle.h"
#include "xllrt/platform/module_path.h"

#include <array>
#include <windows.h>

namespace metrify {

std::string ModulePath() {
    std::array<char, MAX_PATH> path;
    const DWORD length = GetModuleFileNameA(static_cast<HMODULE>(ModuleHandle()), path.data(),
                                            static_cast<DWORD>(path.size()));
    // A truncated path is useless.
    return length < path.size() ? std::string(path.data(), length) : std::string();
}

} // namespace metrify
