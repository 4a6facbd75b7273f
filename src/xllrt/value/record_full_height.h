#pragma once

// Narrow arrays of 65536 rows, the most that the family takes. The 16 bits of the record's count hold 0 for
// them, as for an array without rows, so the blocks of those that were made here are known by their address.

#include "xllrt/value/host_records.h"

namespace metrify {

/// True for the cells of an array of 65536 rows that was made here.
bool IsFullHeight(const XLOPER* cells);

/// Notes the cells of such an array, from their allocation to their release.
void NoteFullHeight(const XLOPER* cells);
void ForgetFullHeight(const XLOPER* cells);

} // namespace metrify
