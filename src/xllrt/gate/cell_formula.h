#pragma once

// The active cell, and the formula of a cell. Nothing is thrown; a failure leaves the outputs unchanged.

#include "xllrt/value/xl_oper.h"

#include <string>

namespace metrify {

/// Has the host convert the source, or without one the result's own value, to a type. Returns the host's
/// code; `xlretFailed` if the result does not have that type afterwards.
int Coerce(CXlOper& result, std::uint16_t type, const CXlOper* source = nullptr);

/// The active cell as a reference with its sheet. False if there is none.
bool ActiveCell(CXlOper& result);

/// The formula of a cell, in A1 style or else in R1C1 style, and whether it is a part of an array. With
/// `international` the formula is in the form of US English. A text that is not a formula is returned as it
/// is.
bool GetCellFormula(const CXlOper& reference, bool international, std::string& formula, bool& is_array,
                    bool to_a1);
bool GetCellFormula(const CXlOper& reference, std::string& formula, bool& is_array, bool to_a1);

/// Enters a formula, in A1 style or else in R1C1 style, into the cells of a reference with its sheet: as an
/// array or for each cell.
bool SetCellFormula(const CXlOper& reference, bool international, const std::string& formula, bool as_array,
                    bool from_a1);
/// A null formula is the empty text.
bool SetCellFormula(const CXlOper& reference, const char* formula, bool as_array, bool from_a1);

/// Converts a formula from one style to the other, relative to a cell.
bool ConvertFormula(const CXlOper& reference, bool international, const std::string& formula,
                    std::string& converted, bool to_a1);

} // namespace metrify
