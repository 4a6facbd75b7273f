#pragma once

// Narrow arrays of 65536 rows, the family's maximum. The 16 bits of the record's count are 0 for them, as for
// an array without rows, so the addresses of the cells of those that were made here are kept in a set.

#include "xllrt/value/host_records.h"

namespace metrify {

/// True for the cells of an array of 65536 rows that was made here.
bool IsFullHeight(const XLOPER* cells);

/// Adds the cells of such an array after their allocation, and removes them before their release.
void NoteFullHeight(const XLOPER* cells);
void ForgetFullHeight(const XLOPER* cells);

} // namespace metrify
