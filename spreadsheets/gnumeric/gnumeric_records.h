#pragma once

// Values in the records of Gnumeric. It knows only the narrow family, with texts in UTF-8.

#include "host/sheet/cell_value.h"

namespace metrify::gnumeric {

/// The value of a record; `#VALUE!` if it holds none.
host::CellValue ReadGnumericRecord(const XLOPER& record);

/// Writes a value into a record, which owns the memory that it needs. A text ends in a zero byte that is not
/// counted, since Gnumeric reads that far. It is cut after the last character that ends within 255 bytes.
void WriteGnumericRecord(const host::CellValue& value, XLOPER& record);

} // namespace metrify::gnumeric
