#pragma once

// The function that the host calls for its events: registered with the others, so that observers are reached
// from outside.

#include "xllrt/app/xll_app.h"

namespace metrify {

/// Names the observer function after the add-in's file and adds its descriptor.
void AddObserverFunction(CXllApp& application);

/// Tells the observers of one of the host's events. The result becomes the answer of an event that can be
/// cancelled. Other numbers do nothing.
void DispatchEvent(CXllApp& application, CXlOper& result, int number, const CXlOper& first,
                   const CXlOper& second);

} // namespace metrify
