#pragma once

// Detects whether the host's formula dialog is open.

#include "xllrt/event/integration.h"

#include <string>
#include <vector>
#include <windows.h>

namespace metrify {

class CXlFormulaWizardDetector final : public IXlFormulaWizardDetector {
  public:
    /// True if a window of the host is the formula dialog.
    bool IsOpen() const override;

    /// True if the window is the formula dialog of the host whose main window has these low 16 bits.
    bool IsFormulaDialog(HWND window, std::uint16_t host_window) const;

    /// Prefixes of the dialog's title, and of the titles of the host's other dialogs. A title that matches
    /// neither list is taken as the dialog's in another language. Without the second list, every title is
    /// taken as the dialog's.
    std::vector<std::string> dialogTitles{"Function Arguments"};
    std::vector<std::string> otherTitles{"Find"};
    bool emptyTitleCounts = true;
};

} // namespace metrify
