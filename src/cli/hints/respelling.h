#pragma once

// Characters and habits of other notations, and how the language writes them.

#include "cli/hints/correction.h"

namespace metrify {

/// Corrects a statement that has failed: characters outside the language, grouped digits, decimal commas,
/// powers without `^`, `to` between units, feet and inches with quotes, units of two words.
void respell(correction& statement);

/// Corrects what the language accepts in another sense than the usual one, such as `1/4 in`. Applies to every
/// statement.
void correct_misread(correction& statement);

} // namespace metrify
