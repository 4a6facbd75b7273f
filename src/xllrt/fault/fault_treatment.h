#pragma once

// The process's treatment of faults while an add-in is open.

namespace metrify {

/// Keeps in place what guarded calls need of the system, so that a guard that opens and closes costs none of
/// its calls. Without this, each outermost guard puts it in place for itself and back again. Faults outside
/// guards go where they went before, either way. Again without effect.
///
/// Where faults come as signals, a handler that is put in place later comes before the guards; it has to pass
/// on to the one that it found what is not its own.
void KeepFaultTreatment();

/// The treatment is what it was before `KeepFaultTreatment`, at the end of this thread's guards if it has any
/// open. No other thread may have one open.
void ReturnFaultTreatment();

} // namespace metrify
