#pragma once

// The entry points of the integration.

#include "xllrt/platform/export.h"

#include <cstdint>

namespace metrify {

extern "C" {

/// Called by a host to prove that it has loaded this add-in. Returns 1.
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL xlCheckInstance();

// Handlers of the events of old hosts. Each returns 1.

METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetActivate();
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetDeactivate();
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnCalculate();
}

} // namespace metrify
