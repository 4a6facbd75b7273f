#pragma once

// Values as lines of text for other programs to read.

#include "host/sheet/cell_value.h"

#include <string>

namespace metrify::host {

/// The rows of a value, each a line that ends with a newline, cells separated by tabs. Numbers are written in
/// the shortest form that reads back equal, texts in UTF-8 between double quotes with the escapes of C,
/// errors and booleans as cells show them, and an empty cell as nothing.
std::string RowsText(const CellValue& value);

} // namespace metrify::host
