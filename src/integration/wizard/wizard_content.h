#pragma once

// The content test of key bindings: a key must not replace a formula by accident.

#include <string_view>

namespace metrify {

/// True if a key may open the list or dialog of a box. Modes: 0 never; 1 if the box is empty; 2 if it is
/// empty or holds a constant; 3 always.
bool AllowsContent(int mode, std::string_view text);

} // namespace metrify
