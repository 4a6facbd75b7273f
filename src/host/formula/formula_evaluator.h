#pragma once

// Evaluation of formulas.

#include "host/formula/formula_tree.h"

namespace metrify::host {

/// The sheets, cells and functions that a formula can refer to.
class EvaluationContext {
  public:
    virtual ~EvaluationContext() = default;

    /// The id of the sheet that a qualifier names; an empty qualifier means the sheet of the formula. 0 if
    /// there is no such sheet.
    virtual IDSHEET SheetOf(std::u16string_view qualifier) = 0;

    /// The value of one cell, or of a rectangle as an array.
    virtual CellValue ValueOf(const Reference& reference) = 0;

    /// Calls a registered function. `#NAME?` for an unknown name.
    virtual CellValue CallRegistered(const std::u16string& name, const std::vector<CellValue>& arguments) = 0;
};

/// Evaluates a formula. A reference gives the value of its cells.
CellValue EvaluateFormula(const FormulaNode& formula, EvaluationContext& context);

} // namespace metrify::host
