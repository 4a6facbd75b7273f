#pragma once

// The little that values need of the host. The gate supplies it.

#include "xllrt/value/host_records.h"

namespace metrify {

/// True if the host's major version is 12 or more: values are then built in the wide family. False until the
/// version has been detected.
bool HostFlag();

/// Gives a record that the host filled back to the host, by `xlFree` through the primitive of its family.
void ReleaseToHost(XLOPER& record);
void ReleaseToHost(XLOPER12& record);

} // namespace metrify
