#pragma once

// Conversion of the host's values to and from records of both families.

#include "host/sheet/cell_value.h"

namespace metrify::host {

/// Reads a record. False for an unknown type, and for an array or reference without its memory.
bool ReadRecord(const XLOPER& record, IDSHEET current_sheet, CellValue& value);
bool ReadRecord(const XLOPER12& record, IDSHEET current_sheet, CellValue& value);

/// Writes a value into a record, which owns the memory that it needs. In the narrow family a text is cut at
/// 255 characters, an integer that exceeds 16 bits becomes a number, and a reference that exceeds the rows
/// and columns of the family becomes `#REF!`.
void WriteRecord(const CellValue& value, XLOPER& record);
void WriteRecord(const CellValue& value, XLOPER12& record);

/// The memory that a record points to; null if it has none.
const void* MemoryOf(const XLOPER& record);
const void* MemoryOf(const XLOPER12& record);

} // namespace metrify::host
