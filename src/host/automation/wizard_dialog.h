#pragma once

// The host's formula dialog: five boxes, a scroll bar, and the accessible name of the function.

#include "host/automation/counted_object.h"

#include <array>
#include <memory>
#include <oleacc.h>
#include <string>
#include <windows.h>

namespace metrify::host {

inline constexpr int kDialogBoxes = 5;

struct WizardDialogOptions {
    HWND owner = nullptr;
    std::string title = "Function Arguments";
    std::string class_name = "bosa_sdm_XL9";
    std::u16string function{}; ///< the name shown
    int arguments = kDialogBoxes;
    bool is_name_nested = false; ///< the name is in a separate object
    LONG name_role = ROLE_SYSTEM_GROUPING;
    int misplaced_box = -1; ///< a box with another left edge
    int foreign_box = -1;   ///< a box of another class
    bool has_scroll_bar = true;
};

class WizardDialog {
  public:
    WizardDialog(const std::shared_ptr<ObjectContext>& context, const WizardDialogOptions& options);
    ~WizardDialog();
    WizardDialog(const WizardDialog&) = delete;
    WizardDialog& operator=(const WizardDialog&) = delete;

    /// Shows and activates the dialog.
    void Show();
    /// Closes the dialog.
    void Close();

    HWND window() const { return window_; }
    HWND box(int index) const { return boxes_.at(static_cast<std::size_t>(index)); }
    HWND scroll_bar() const { return scroll_bar_; }

    /// Scrolls until this argument is in the first box.
    void ScrollTo(int argument);

    void SetText(int box, const std::string& text);
    std::string Text(int box) const;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    void MakeControls(const WizardDialogOptions& options);
    void MakeScrollBar(int left, int top, int height);

    HWND window_ = nullptr;
    std::array<HWND, kDialogBoxes> boxes_{};
    HWND scroll_bar_ = nullptr;
    ComPtr<IDispatch> accessible_;
};

} // namespace metrify::host
