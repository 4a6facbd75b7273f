#pragma once

// The controls of the host's formula dialog.

#include <array>
#include <span>
#include <windows.h>

namespace metrify {

inline constexpr int kWizardBoxes = 5;

/// The zero-based index of a window; -1 for another one, and for none.
int IndexOfWindow(std::span<const HWND> windows, HWND window);

struct WizardControls {
    std::array<HWND, kWizardBoxes> boxes{};
    HWND scroll_bar = nullptr;
    int count = 0; ///< the number of the last visible box

    /// The zero-based index of a box; -1 for another window.
    int IndexOf(HWND window) const { return IndexOfWindow(boxes, window); }
    /// The index of the argument in the first box.
    int FirstVisible() const;
};

/// True if a box is visible, or will be when the dialog is shown.
bool IsBoxVisible(HWND box);

/// Finds the controls. Returns false if the window is not the dialog.
bool FindWizardControls(HWND dialog, WizardControls& controls);

} // namespace metrify
