#include "xllrt/fault/fault_treatment.h"

namespace metrify {

// The system finds the guards of a thread by its stack. There is nothing to put in place.
void KeepFaultTreatment() {}
void ReturnFaultTreatment() {}

} // namespace metrify
