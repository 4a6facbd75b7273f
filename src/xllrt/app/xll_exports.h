#pragma once

// The entry points that every add-in exports to its host. Each is one call.

#include "xllrt/platform/export.h"
#include "xllrt/value/host_records.h"

namespace metrify {

extern "C" {

METRIFY_EXPORT int METRIFY_HOST_CALL xlAutoOpen();
METRIFY_EXPORT int METRIFY_HOST_CALL xlAutoClose();
METRIFY_EXPORT int METRIFY_HOST_CALL xlAutoAdd();
METRIFY_EXPORT int METRIFY_HOST_CALL xlAutoRemove();
METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL xlAddInManagerInfo12(XLOPER12* action);
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL xlAddInManagerInfo(XLOPER* action);
METRIFY_EXPORT void METRIFY_HOST_CALL xlAutoFree12(XLOPER12* record);
METRIFY_EXPORT void METRIFY_HOST_CALL xlAutoFree(XLOPER* record);

/// Entry points of the observer function; the last argument is unused.
METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL CXlApp_ObserverEventHandler12(std::int32_t number, XLOPER12* first,
                                                                         XLOPER12* second, XLOPER12* third);
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL CXlApp_ObserverEventHandler4(std::int32_t number, XLOPER* first,
                                                                      XLOPER* second, XLOPER* third);
}

} // namespace metrify
