#pragma once

// The version of the host, which settles the family that values are built in.

#include "xllrt/value/host_link.h"

namespace metrify {

/// The host's major version; 0 until it is detected.
int HostVersion();

/// Makes this the host's version, and the host flag what follows from it.
void SetHostVersion(int version);

/// Asks the host for its version, through the narrow primitive, unless it is known already. A host that does
/// not answer leaves 0, so that the next call asks again.
void DetectHostVersion();

} // namespace metrify
