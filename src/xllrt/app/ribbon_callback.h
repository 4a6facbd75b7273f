#pragma once

// Callbacks from the server of the shared ribbon to the add-in: a macro, whose name contains the name of the
// add-in.

#include "xllrt/event/app_events.h"
#include "xllrt/platform/export.h"
#include "xllrt/value/host_records.h"

namespace metrify {

/// Prefixes the macro's name with the add-in's name before the macro is registered.
class CRibbonEventRegistrar final : public CXlRegisterFunctionsEventStaticObserver {
  public:
    void Notify(CXlEventArgs& args) override;
};

extern "C" {

METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL RibbonCallback_12(std::int32_t callback, const XCHAR* id,
                                                             const XCHAR* tag, std::int32_t index,
                                                             const XCHAR* text, const XCHAR* selectedId,
                                                             std::int16_t pressed);
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL RibbonCallback_4(std::int32_t callback, const char* id,
                                                          const char* tag, std::int32_t index,
                                                          const char* text, const char* selectedId,
                                                          std::int16_t pressed);
}

} // namespace metrify
