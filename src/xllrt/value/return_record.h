#pragma once

// Records that were handed to the host as results, and the memory that they hold until the host is done with
// them.

#include "xllrt/value/host_records.h"

namespace metrify {

/// What `xlAutoFree12` does with a record that the host has finished with: releases the memory of a text, a
/// reference or an array, and empties it. The record itself stays. Null is ignored.
void AutoFree12(XLOPER12* record);
/// The same for `xlAutoFree`.
void AutoFree4(XLOPER* record);

/// Empties a return record for its next use. What it was handed out with and the host never gave back is
/// released.
void ResetReturnRecord(XLOPER& record);
void ResetReturnRecord(XLOPER12& record);

/// True if what the part points at is released with the whole.
bool IsPartOf(const XLOPER& part, const XLOPER& whole);
bool IsPartOf(const XLOPER12& part, const XLOPER12& whole);

} // namespace metrify
