#pragma once

// The cells of a record, and how many there are.

#include "xllrt/value/record_family.h"

namespace metrify {

/// The cell of an array record at a row and column; of a number, boolean, integer or text, at row 0 and
/// column 0, the record itself. Throws a `CXlIllegalArgumentException` for a null record, a
/// `CXlOutOfRangeException` outside the record's own dimensions, and a `CXlBadOperTypeException` for a record
/// of another type.
XLOPER* CellOf(XLOPER* record, std::int32_t row, std::int32_t column);
XLOPER12* CellOf(XLOPER12* record, std::int32_t row, std::int32_t column);

/// True for a number, text, boolean or integer: a single cell where dimensions are asked for.
bool IsScalarType(std::uint16_t type);

/// Rows and columns; a scalar has one of each, anything else none.
XlSize DimensionsOf(const XLOPER& record);
XlSize DimensionsOf(const XLOPER12& record);

/// Rows and columns, also of a reference, for which its first rectangle counts. With `noScalars`, a scalar
/// has none.
XlSize RefDimensionsOf(const XLOPER& record, bool noScalars);
XlSize RefDimensionsOf(const XLOPER12& record, bool noScalars);

} // namespace metrify
