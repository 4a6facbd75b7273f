#pragma once

// Draws arrows and buttons in the user's theme or in the classic style.

#include "integration/wizard/wizard_registry.h"

#include <windows.h>

namespace metrify {

class WizardTheme {
  public:
    WizardTheme();
    ~WizardTheme();
    WizardTheme(const WizardTheme&) = delete;
    WizardTheme& operator=(const WizardTheme&) = delete;

    /// Opens the theme for a window, unless it is open. Without a theme, the style is classic.
    void Open(HWND window);
    /// Closes the theme, for example after the user has changed it.
    void Close();
    bool IsOpen() const { return combo_box_ && button_; }

    void Draw(ArgumentUi kind, const DRAWITEMSTRUCT& item, HFONT font) const;

  private:
    bool HasFunctions() const;
    bool DrawThemed(ArgumentUi kind, const DRAWITEMSTRUCT& item) const;

    HMODULE library_;
    HANDLE combo_box_ = nullptr;
    HANDLE button_ = nullptr;
    bool is_asked_for_ = false; // even if there was none
};

} // namespace metrify
