#pragma once

// Registers and unregisters the functions of an application.

#include "xllrt/app/xll_app.h"

namespace metrify {

/// Registers the application's functions, after observers had the opportunity to add or change some. True if
/// every one was registered, or is not needed in this host.
bool RegisterAll(CXllApp& application);

/// Registers one function, which may have been added to the application later.
bool RegisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor);

/// Unregisters one function. The host's return codes are ignored.
void UnregisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor);

/// Unregisters all functions. The host's return codes are ignored.
void UnregisterAll(CXllApp& application);

} // namespace metrify
