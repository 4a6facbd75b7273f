#pragma once

// Conversion between the host's values and variants.

#include "host/sheet/cell_value.h"
#include "integration/com/com_value.h"

namespace metrify::host {

ComVariant ToVariant(const CellValue& value);

/// A value that no cell can hold becomes an omitted argument.
CellValue FromVariant(const ComVariant& value);

} // namespace metrify::host
