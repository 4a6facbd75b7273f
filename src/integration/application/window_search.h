#pragma once

// From the host's window to its application object.

#include "integration/com/com_failure.h"
#include "integration/com/com_ptr.h"

#include <oaidl.h>

namespace metrify {

/// Finds the host's application object by its main window. If no workbook is open, one is opened for the
/// duration of the search. Returns false, with the reason, on failure.
bool FindApplicationByWindow(ComPtr<IDispatch>& application, ComFailure& failure);

} // namespace metrify
