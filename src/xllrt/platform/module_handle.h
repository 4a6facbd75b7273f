#pragma once

// The handle of the module this code is part of, as the loader gave it.

namespace metrify {

/// Keeps the handle at process attach; null takes it back at detach.
void KeepModuleHandle(void* module);

/// The handle kept, or null.
void* ModuleHandle();

} // namespace metrify
