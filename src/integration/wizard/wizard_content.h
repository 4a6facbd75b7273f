#pragma once

// Whether a key may open what stands beside a box, so that a formula in it isn't replaced by accident.

#include <string_view>

namespace metrify {

/// Modes: 0 never; 1 if the box is empty; 2 if it is empty or holds a constant; 3 always.
bool AllowsContent(int mode, std::string_view text);

} // namespace metrify
