#include "xllrt/fault/fault_handlers.h"

namespace metrify {

// The system finds the guards of a thread on its stack. There is nothing to install.
void InstallFaultHandlers() {}
void RestoreFaultHandlers() {}

} // namespace metrify
