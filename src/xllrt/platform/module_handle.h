#pragma once

// The handle of the module this code is part of, as the loader passed it.

namespace metrify {

/// Stores the handle at process attach; null clears it at detach.
void KeepModuleHandle(void* module);

/// The stored handle, or null.
void* ModuleHandle();

} // namespace metrify
