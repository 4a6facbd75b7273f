#pragma once

// Telling the host of the add-in's functions, and taking them back.

#include "xllrt/app/xll_app.h"

#include <string>

namespace metrify {

/// Registers the application's functions, in the family that host and function allow. True if every one was
/// registered, or has no place in this host.
bool RegisterAll(CXllApp& application);

/// Registers one function, which may have come to the application later.
bool RegisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor);

/// Takes one function back. What the host answers is not looked at.
void UnregisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor);

/// Takes all functions back. What the host answers is not looked at.
void UnregisterAll(CXllApp& application);

} // namespace metrify
