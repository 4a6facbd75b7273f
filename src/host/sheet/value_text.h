#pragma once

// Values as lines of text, for programs that read them.

#include "host/sheet/cell_value.h"

#include <string>

namespace metrify::host {

/// The rows of a value, a line each with a newline behind it, cells separated by tabs. Numbers stand in the
/// shortest form that reads back equal, texts in double quotes with the escapes of C in UTF-8, errors and
/// booleans by their words; an empty cell is nothing.
std::string RowsText(const CellValue& value);

} // namespace metrify::host
