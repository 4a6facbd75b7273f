#pragma once

// What the module shows to the host for its integration.

#include "xllrt/platform/export.h"

#include <cstdint>

namespace metrify {

extern "C" {

/// The proof that a host has this add-in: it calls this. Gives 1.
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL xlCheckInstance();

// The macros for the events of old hosts. Each gives 1.

METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetActivate();
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetDeactivate();
METRIFY_EXPORT std::int32_t METRIFY_HOST_CALL CXllComImpl_OnCalculate();
}

} // namespace metrify
