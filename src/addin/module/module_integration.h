#pragma once

// The integration of the module with its host: a real one where there are such hosts.

#include "xllrt/event/integration.h"

namespace metrify {

/// Lives as long as the module.
const CXlIntegration& ModuleIntegration();

} // namespace metrify
