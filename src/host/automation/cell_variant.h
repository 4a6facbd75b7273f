#pragma once

// The host's values as automation passes them.

#include "host/sheet/cell_value.h"
#include "integration/com/com_value.h"

namespace metrify::host {

ComVariant ToVariant(const CellValue& value);

/// A value of no kind that cells hold is an argument left out.
CellValue FromVariant(const ComVariant& value);

} // namespace metrify::host
