#pragma once

// The key that ends a calculation.

namespace metrify {

/// Asks the host whether its user has pressed Escape, and leaves the break pending: the host ends the rest of
/// its calculation by it, and a thread-safe function isn't allowed to clear it. False if the host can't tell.
bool is_escape_pressed() noexcept;

} // namespace metrify
