#pragma once

// The module's integration with the host, which is available on Windows only.

#include "xllrt/event/integration.h"

namespace metrify {

/// Exists as long as the module.
const CXlIntegration& ModuleIntegration();

} // namespace metrify
