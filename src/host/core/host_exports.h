#pragma once

// The names by which add-ins reach the host: `MdCallBack12`, and what `Excel4` and `Excel4v` are made of.

#include "xllrt/gate/host_primitives.h"

namespace metrify::host {

/// The newest host's primitives, for a runtime that is part of the same program.
HostPrimitives NewestHostPrimitives();

/// Makes the exports part of the program; nobody in it calls them.
void KeepHostExports();

} // namespace metrify::host
