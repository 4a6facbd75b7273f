#pragma once

// What values need from the host. The gate implements it.

#include "xllrt/value/host_records.h"

namespace metrify {

/// True if the host's major version is 12 or more: values are then built in the wide family. False until the
/// version has been detected.
bool HostFlag();

/// Returns a record that the host filled to the host, by `xlFree` through the primitive of its family.
void ReleaseToHost(XLOPER& record);
void ReleaseToHost(XLOPER12& record);

} // namespace metrify
