#pragma once

// Formulas in cells: entering them, and what they come to.

#include "host/state/host_state.h"

namespace metrify::host {

/// Evaluates a formula, with its "=", as a cell of the active sheet holds it, references in the style given.
/// Nothing if it is no formula. What it comes to may be an array.
std::optional<CellValue> EvaluateText(HostState& state, std::u16string_view formula, ReferenceStyle style,
                                      CellPosition base, CallContext context);

/// Puts what a user types into the cells of an area of the active sheet, and calculates the sheet: a formula,
/// with its
/// "=", a constant, or nothing to empty them. As an array formula, one formula fills the area. False, and
/// nothing done, if the text is no formula, or if the area cuts through an array.
bool EnterCells(HostState& state, const Area& area, const std::u16string& text, ReferenceStyle style,
                bool as_array);

/// Evaluates all formulas of the active sheet anew, each after those that it refers to. In a circle of
/// formulas one reads the value that another had before.
void Recalculate(HostState& state);

/// The value of a reference: of one cell its value, of a rectangle an array, `#VALUE!` for several areas,
/// `#REF!` where there is no sheet.
CellValue ValueOfReference(HostState& state, const Reference& reference);

} // namespace metrify::host
