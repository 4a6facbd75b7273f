#pragma once

// The host's objects described as text.

#include "integration/com/com_ptr.h"

#include <oaidl.h>
#include <string>

namespace metrify {

/// The sheet that the user sees. Returns `E_POINTER` without application.
HRESULT GetActiveWorksheet(IDispatch* application, ComPtr<IDispatch>& sheet);

/// The name of a workbook or of a worksheet.
HRESULT ObjectName(IDispatch* object, std::u16string& name);

/// The address of a range, with workbook and sheet if `external`.
HRESULT RangeAddress(IDispatch* range, std::u16string& text, bool external);

} // namespace metrify
