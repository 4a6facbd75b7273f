#pragma once

// Words for the user, on the host's road.

#include <string_view>

namespace metrify {

/// The kind of alert that tells of a failure. Kind 1 asks, with OK and Cancel.
inline constexpr int kAlertFailure = 3;
inline constexpr int kAlertQuestion = 1;

/// Has the host show a text. Gives the user's answer; false if the host didn't show it.
bool Alert(std::string_view text, int kind);
bool Alert(std::u16string_view text, int kind);

} // namespace metrify
