#include "xllrt/fault/fault_handlers.h"

namespace metrify {

// The system finds the guards of a thread by its stack. There is nothing to put in place.
void InstallFaultHandlers() {}
void RestoreFaultHandlers() {}

} // namespace metrify
