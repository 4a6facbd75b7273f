#include "xllrt/platform/module_handle.h"

#include <atomic>

namespace metrify {

namespace {

std::atomic<void*> kept_module = nullptr;

} // namespace

void KeepModuleHandle(void* module) {
    kept_module.store(module, std::memory_order_relaxed);
}

void* ModuleHandle() {
    return kept_module.load(std::memory_order_relaxed);
}

} // namespace metrify
