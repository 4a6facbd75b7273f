#pragma once

// The registered function that the host runs for its events. It notifies the observers.

#include "xllrt/app/xll_app.h"

namespace metrify {

/// Names the observer function after the add-in's file and adds its descriptor.
void AddObserverFunction(CXllApp& application);

/// Notifies the observers of an event of the host. Sets the result for a cancellable event. Does nothing for
/// an event without observers.
void DispatchEvent(CXllApp& application, CXlOper& result, int number, const CXlOper& first,
                   const CXlOper& second);

} // namespace metrify
