#include "xllrt/platform/module_path.h"

#include <dlfcn.h>

namespace metrify {

namespace {

constexpr std::size_t kPathBuffer = 260;

} // namespace

std::string ModulePath() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ModulePath), &info) == 0 || !info.dli_fname)
        return {};
    std::string path = info.dli_fname;
    return path.size() < kPathBuffer ? path : std::string();
}

} // namespace metrify
