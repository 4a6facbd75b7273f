#pragma once

// The windows that the hook adds to the dialog: an overlay on each box that has a list or a button, and one
// list for all boxes.

#include "integration/wizard/wizard_dialog.h"

#include <array>

namespace metrify {

class WizardOverlays {
  public:
    WizardOverlays();
    ~WizardOverlays();
    WizardOverlays(const WizardOverlays&) = delete;
    WizardOverlays& operator=(const WizardOverlays&) = delete;

    /// Creates the font; called once, after the hooks are installed.
    void LoadFont();

    void Create(const WizardDialog& dialog, bool is_themed);
    void Destroy();

    /// True if a box has an overlay.
    bool AreMade() const { return are_made_; }
    /// The overlay of a box, or null.
    HWND Overlay(int box) const { return overlays_.at(static_cast<std::size_t>(box)); }
    /// The box of an overlay; -1 for any other window.
    int IndexOf(HWND window) const { return IndexOfWindow(overlays_, window); }
    HWND List() const { return list_; }
    HFONT Font() const { return font_; }

  private:
    void CreateOverlay(const WizardDialog& dialog, int box, bool is_themed);
    void CreateList(HWND dialog);

    unsigned system_major_;
    HFONT font_ = nullptr;
    bool are_made_ = false;
    std::array<HWND, kWizardBoxes> overlays_{};
    HWND list_ = nullptr;
};

} // namespace metrify
