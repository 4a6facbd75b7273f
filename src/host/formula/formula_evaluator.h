#pragma once

// The value of a formula.

#include "host/formula/formula_tree.h"

namespace metrify::host {

/// What a formula refers to.
class EvaluationContext {
  public:
    virtual ~EvaluationContext() = default;

    /// The id of the sheet that a qualifier names, an empty one the sheet of the formula. 0 if there is none.
    virtual IDSHEET SheetOf(std::u16string_view qualifier) = 0;

    /// The value of one cell, or of a rectangle as an array.
    virtual CellValue ValueOf(const Reference& reference) = 0;

    /// Calls a function that somebody registered. `#NAME?` for a name that nobody did.
    virtual CellValue CallRegistered(const std::u16string& name, const std::vector<CellValue>& arguments) = 0;
};

/// Evaluates a formula. A formula that is a reference gives the value it refers to.
CellValue EvaluateFormula(const FormulaNode& formula, EvaluationContext& context);

} // namespace metrify::host
