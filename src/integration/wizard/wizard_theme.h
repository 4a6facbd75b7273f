#pragma once

// The user's theme, and how arrows and buttons look in it and without it.

#include "integration/wizard/wizard_registry.h"

#include <windows.h>

namespace metrify {

class WizardTheme {
  public:
    WizardTheme();
    ~WizardTheme();
    WizardTheme(const WizardTheme&) = delete;
    WizardTheme& operator=(const WizardTheme&) = delete;

    /// Opens the theme for a window, once until it is closed. Without a theme, things look classic.
    void Open(HWND window);
    /// Lets the theme go, which may have become another one.
    void Close();
    bool IsOpen() const { return combo_box_ && button_; }

    void Draw(ArgumentUi kind, const DRAWITEMSTRUCT& item, HFONT font) const;

  private:
    bool HasFunctions() const;
    bool DrawThemed(ArgumentUi kind, const DRAWITEMSTRUCT& item) const;

    HMODULE library_;
    HANDLE combo_box_ = nullptr;
    HANDLE button_ = nullptr;
    bool is_asked_for_ = false; // whether there was one or not
};

} // namespace metrify
