#pragma once

// What the module does with the host's objects when the whole process ends.

namespace metrify {

/// Forgets the host's objects and the hook on its windows without a call. At the end of a process other
/// modules may be gone and other threads have been stopped anywhere, so that a call may fault or wait for
/// ever.
void AbandonHost();

} // namespace metrify
