#pragma once

// Values of the host to and from the records of either family.

#include "host/sheet/cell_value.h"

namespace metrify::host {

/// Reads a record. False for a type that is none, or an array or reference that points nowhere.
bool ReadRecord(const XLOPER& record, IDSHEET current_sheet, CellValue& value);
bool ReadRecord(const XLOPER12& record, IDSHEET current_sheet, CellValue& value);

/// Makes a record of a value, with memory of its own where it needs any. The narrow family cuts a text at 255
/// characters, takes an integer beyond 16 bits as a number and a reference beyond its rows and columns as
/// `#REF!`.
void WriteRecord(const CellValue& value, XLOPER& record);
void WriteRecord(const CellValue& value, XLOPER12& record);

/// Where the memory behind a record stands; null if it has none.
const void* MemoryOf(const XLOPER& record);
const void* MemoryOf(const XLOPER12& record);

} // namespace metrify::host
