#pragma once

// The controls of the host's formula dialog.

#include <array>
#include <windows.h>

namespace metrify {

inline constexpr int kWizardBoxes = 5;

struct WizardControls {
    std::array<HWND, kWizardBoxes> boxes{};
    HWND scroll_bar = nullptr;
    int count = 0; ///< the number of the last visible box

    /// The number of a box, counted from 0; -1 for another window.
    int IndexOf(HWND window) const;
    /// The number of the argument in the first box.
    int FirstVisible() const;
};

/// Whether a box is one of those that the dialog shows, or will show when it is shown itself.
bool IsBoxVisible(HWND box);

/// Finds the controls. False if the window's children aren't those of the dialog.
bool FindWizardControls(HWND dialog, WizardControls& controls);

} // namespace metrify
