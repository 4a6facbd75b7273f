#pragma once

// Conversion of formulas between the two styles of references.

#include "host/formula/formula_tokens.h"

namespace metrify::host {

/// The formula with its references in the style `to`. `row_absolute` and `column_absolute` make rows and
/// columns absolute or relative; by default they stay as they are. Nothing if the text is not a formula.
std::optional<std::u16string> ConvertFormulaText(std::u16string_view formula, const FormulaSetting& from,
                                                 ReferenceStyle to, std::optional<bool> row_absolute = {},
                                                 std::optional<bool> column_absolute = {});

} // namespace metrify::host
