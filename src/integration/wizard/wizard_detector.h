#pragma once

// Whether the host's formula dialog is open.

#include "xllrt/event/integration.h"

#include <string>
#include <vector>
#include <windows.h>

namespace metrify {

class CXlFormulaWizardDetector final : public IXlFormulaWizardDetector {
  public:
    /// Whether some window of the host's is the formula dialog.
    bool IsOpen() const override;

    /// Whether this window is the formula dialog of the host whose main window has these low 16 bits.
    bool IsFormulaDialog(HWND window, std::uint16_t host_window) const;

    /// What titles of the dialog begin with, and titles of the host's other dialogs. A title that begins
    /// with none of both belongs to the dialog, in the language of another host; without the second list,
    /// every title does.
    std::vector<std::string> dialogTitles{"Function Arguments"};
    std::vector<std::string> otherTitles{"Find"};
    bool emptyTitleCounts = true;
};

} // namespace metrify
