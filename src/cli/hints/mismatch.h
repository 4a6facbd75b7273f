#pragma once

#include "cli/hints/correction.h"

namespace metrify {

/// Corrects a line whose request has another dimension than its value: pounds of mass, letters for
/// temperatures, reciprocal quantities. If none of these helps, the note names the two dimensions. Does
/// nothing if value or request can't be read.
void correct_mismatch(correction& statement);

} // namespace metrify
