#pragma once

// The exports of the host program that add-ins call: `MdCallBack12`, `Excel4` and `Excel4v`.

#include "xllrt/gate/host_primitives.h"

namespace metrify::host {

/// The primitives of the newest host, for a runtime in the same program.
HostPrimitives NewestHostPrimitives();

/// Has no effect. A call of it makes the linker keep the exports, which nothing else in the program refers
/// to.
void KeepHostExports();

} // namespace metrify::host
