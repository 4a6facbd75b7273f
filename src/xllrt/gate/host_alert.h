#pragma once

// Alert boxes shown by the host.

#include <string_view>

namespace metrify {

/// The kinds of alerts: a failure with OK, a question with OK and Cancel.
inline constexpr int kAlertFailure = 3;
inline constexpr int kAlertQuestion = 1;

/// Has the host show a text. Returns the user's answer; false if the host did not show it.
bool Alert(std::string_view text, int kind);
bool Alert(std::u16string_view text, int kind);

} // namespace metrify
