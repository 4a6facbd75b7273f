#pragma once

// Conversion between the kinds of values. A value that cannot be converted becomes an error, and errors are
// passed on.

#include "host/sheet/cell_value.h"

namespace metrify::host {

/// The first cell of an array, `#VALUE!` for an array without cells; any other value itself.
const CellValue& FirstCell(const CellValue& value);

/// A number: a text is parsed, TRUE is 1, an empty cell 0. For an array, its first cell is converted.
CellValue ToNumberValue(const CellValue& value);

/// A text: a number in its shortest form, TRUE or FALSE, the empty text for an empty cell.
CellValue ToTextValue(const CellValue& value);

/// A boolean: a number is TRUE unless it is 0, a text must read TRUE or FALSE.
CellValue ToBoolValue(const CellValue& value);

/// The integer part of a number, which must be from `smallest` to `largest`.
CellValue ToIntegerValue(const CellValue& value, double smallest, double largest);

} // namespace metrify::host
