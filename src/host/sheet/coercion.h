#pragma once

// How the host turns one kind of value into another. A value that cannot be turned becomes an error, and an
// error stays what it is.

#include "host/sheet/cell_value.h"

namespace metrify::host {

/// The first cell of an array, of any other value the value itself; `#VALUE!` of an array without cells.
const CellValue& FirstCell(const CellValue& value);

/// A number. A text is read as one, TRUE is 1, an empty cell 0; of an array its first cell counts.
CellValue ToNumberValue(const CellValue& value);

/// A text: of a number the shortest, of a boolean its word, of an empty cell none.
CellValue ToTextValue(const CellValue& value);

/// A boolean: a number is TRUE unless it is 0, a text must be one of the words.
CellValue ToBoolValue(const CellValue& value);

/// The integer part of a number. `smallest` and `largest` are the bounds of the integers at hand.
CellValue ToIntegerValue(const CellValue& value, double smallest, double largest);

} // namespace metrify::host
