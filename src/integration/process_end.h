#pragma once

// Cleanup at the end of the process.

namespace metrify {

/// Forgets the host's objects and the window hooks without a call. When a process ends, other modules may be
/// unloaded and other threads have been stopped at any point, so a call may fault or never return.
void AbandonHost();

} // namespace metrify
