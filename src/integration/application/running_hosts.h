#pragma once

// The application objects of all running hosts.

#include "integration/com/com_failure.h"
#include "integration/com/com_ptr.h"

#include <functional>
#include <oaidl.h>

namespace metrify {

/// Returns true if the application object belongs to the wanted host.
using ApplicationTest = std::function<bool(IDispatch* application)>;

/// Finds the application object that passes the test: first the active one, then those of the running object
/// table. Returns false, with the reason, if there is none.
bool FindRunningApplication(double host_version, const ApplicationTest& is_wanted,
                            ComPtr<IDispatch>& application, ComFailure& failure);

} // namespace metrify
