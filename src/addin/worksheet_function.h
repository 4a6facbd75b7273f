#pragma once

// The worksheet function: one conversion from cell to cells.

#include "xllrt/platform/export.h"
#include "xllrt/text/dual_string.h"
#include "xllrt/value/xl_oper.h"

namespace metrify {

/// Hosts of later releases are refused.
inline constexpr double kLastSupportedRelease = 15.0;

/// The release that the host says it is; 0 if it doesn't say.
double host_release_number();

/// Converts Val from InUnits to OutUnits. The result becomes one row of two cells, the number and the unit
/// text; an error's text goes to the first cell and the second is empty. A host that is too new gets a single
/// text. Gives null: the result is the one passed.
CXlOper* convert_units_cell(CXlOper& result, double Val, CXlDualString& InUnits, CXlDualString& OutUnits);

extern "C" {

METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL Metrify_12(double Val, const XCHAR* InUnits,
                                                      const XCHAR* OutUnits);
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL Metrify_4(double Val, const char* InUnits, const char* OutUnits);
}

} // namespace metrify
