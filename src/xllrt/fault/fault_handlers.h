#pragma once

// The handlers of faults that an add-in installs for as long as it is open.

namespace metrify {

/// Installs what guarded calls need of the system, so that a guard costs no calls of its own. Without this,
/// each outermost guard installs it and restores what was there before. Faults outside guards go where they
/// went before, either way. A second call does nothing.
///
/// Where faults come as signals, a handler that is installed later comes before the guards; it has to pass
/// faults that are not its own on to the handler that it replaced.
void InstallFaultHandlers();

/// Restores the handlers that `InstallFaultHandlers` replaced; if this thread has guards open, when the last
/// of them ends. No other thread may have one open.
void RestoreFaultHandlers();

} // namespace metrify
