#pragma once

// The road from the server of the shared ribbon to the add-in: a macro, which every add-in registers under a
// name of its own.

#include "xllrt/event/app_events.h"
#include "xllrt/platform/export.h"
#include "xllrt/value/host_records.h"

namespace metrify {

/// Puts the add-in's name in front of that of the macro before it is registered.
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
