#pragma once

// The version of the host, which determines the family that values are built in.

#include "xllrt/value/host_link.h"

namespace metrify {

/// The host's major version; 0 until it is detected.
int HostVersion();

/// Sets the host's version, and the host flag accordingly.
void SetHostVersion(int version);

/// Asks the host for its version, through the narrow primitive, unless it is known already. If the host does
/// not answer, the version stays 0, so that the next call asks again.
void DetectHostVersion();

} // namespace metrify
