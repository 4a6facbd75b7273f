#pragma once

// Words that the language does not know, and what is probably meant.

#include "cli/hints/correction.h"

namespace metrify {

/// Replaces the unknown names of a statement where the meaning is clear, and adds a note for each. Uses the
/// names of the calculator in use.
void resolve_unknown_names(correction& statement);

} // namespace metrify
