#pragma once

// The cells of a record.

#include "xllrt/value/record_family.h"

namespace metrify {

/// The cell of an array record at a row and column; of a number, boolean, integer or text, at row 0 and
/// column 0, the record itself. Throws a `CXlIllegalArgumentException` for a null record, a
/// `CXlOutOfRangeException` outside the record's own dimensions, and a `CXlBadOperTypeException` for a record
/// of another type.
XLOPER* CellOf(XLOPER* record, std::int32_t row, std::int32_t column);
XLOPER12* CellOf(XLOPER12* record, std::int32_t row, std::int32_t column);

} // namespace metrify
