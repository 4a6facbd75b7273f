#pragma once

// Formulas in cells: entry and evaluation.

#include "host/state/host_state.h"

namespace metrify::host {

/// Evaluates a formula with its "=" as if the cell `base` of the active sheet contained it, references in the
/// given style. Nothing if it is not a formula. The value may be an array.
std::optional<CellValue> EvaluateText(HostState& state, std::u16string_view formula, ReferenceStyle style,
                                      CellPosition base, CallContext context);

/// Enters a text into each cell of an area of the active sheet and calculates the sheet. The text is a
/// formula with its "=", a constant, or empty to clear the cells. With `as_array`, one array formula fills
/// the area. False without any change if the text begins as a formula but is none, or if the area contains
/// only a part of an array.
bool EnterCells(HostState& state, const Area& area, const std::u16string& text, ReferenceStyle style,
                bool as_array);

/// Evaluates all formulas of the active sheet, each after those that it refers to. In a circular reference,
/// one formula reads the previous value of another.
void Recalculate(HostState& state);

/// The value of a reference: a single value for one cell, an array for a rectangle, `#VALUE!` for several
/// areas, `#REF!` for a closed sheet.
CellValue ValueOfReference(HostState& state, const Reference& reference);

} // namespace metrify::host
