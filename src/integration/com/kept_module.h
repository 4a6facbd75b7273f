#pragma once

// A module that must not be unloaded.

namespace metrify {

/// Keeps this module loaded until the process ends.
void KeepModule();

} // namespace metrify
