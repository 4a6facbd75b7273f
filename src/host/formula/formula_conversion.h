#pragma once

// Formulas from one style of references to the other.

#include "host/formula/formula_tokens.h"

namespace metrify::host {

/// The formula with its references in the other style; `row_absolute` and `column_absolute` make them so, or
/// leave them as they are. Nothing if it is no formula.
std::optional<std::u16string> ConvertFormulaText(std::u16string_view formula, const FormulaSetting& from,
                                                 ReferenceStyle to, std::optional<bool> row_absolute = {},
                                                 std::optional<bool> column_absolute = {});

} // namespace metrify::host
