#pragma once

// The worksheet function.

#include "xllrt/platform/export.h"
#include "xllrt/text/dual_string.h"
#include "xllrt/value/xl_oper.h"

namespace metrify {

/// The release number reported by the host; 0 if it reports none.
double host_release_number();

/// Converts Val from InUnits to OutUnits. The result is a row of two cells: the number and the unit text, or
/// an error message and an empty text. If the host is too new, the result is a single text. Returns null,
/// since the result is the one passed.
CXlOper* convert_units_cell(CXlOper& result, double Val, CXlDualString& InUnits, CXlDualString& OutUnits);

extern "C" {

METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL Metrify_12(double Val, const XCHAR* InUnits,
                                                      const XCHAR* OutUnits);
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL Metrify_4(double Val, const char* InUnits, const char* OutUnits);
}

} // namespace metrify
