#pragma once

// Lists and buttons beside the boxes of the host's formula dialog. The host offers no way to put them there,
// so its window messages are watched from outside.

#include "integration/wizard/wizard_controls.h"
#include "integration/wizard/wizard_name.h"
#include "integration/wizard/wizard_registry.h"
#include "integration/wizard/wizard_theme.h"

#include <array>
#include <memory>
#include <string>
#include <windows.h>

namespace metrify {

class CWizardHook {
  public:
    /// Watches the calling thread from now on. Throws a `CXlRuntimeException` if that is done already, or
    /// can't be. The registry must stay.
    static void Install(IXlWizExUIFunctionRegistry& registry);
    /// Stops watching, and takes everything away that it put into the dialog.
    static void Remove();
    /// For the end of the process, when no window may be called any more: forgets the hook without a call.
    static void Abandon();
    /// The installed hook, or null.
    static CWizardHook* Instance();

    ~CWizardHook();
    CWizardHook(const CWizardHook&) = delete;
    CWizardHook& operator=(const CWizardHook&) = delete;

    /// Tells which function the dialog that has been made will show. The next dialog forgets it.
    void SetFunctionName(std::string name) { function_name_ = std::move(name); }

    /// Whether there is a dialog: made, or in use with its controls found.
    enum class State { idle, created, active };
    State Now() const { return state_; }
    /// What stands beside a box, or null.
    HWND Overlay(int box) const { return overlays_.at(static_cast<std::size_t>(box)); }
    HWND List() const { return list_; }
    /// The box whose list is open; -1 if none is.
    int OpenIndex() const { return open_index_; }

  private:
    explicit CWizardHook(IXlWizExUIFunctionRegistry& registry);

    static LRESULT CALLBACK MessageProcedure(int code, WPARAM first, LPARAM second);
    static LRESULT CALLBACK KeyboardProcedure(int code, WPARAM key, LPARAM flags);

    // Messages.
    void HandleMessage(const CWPRETSTRUCT& message);
    void HandleCreation(const CWPRETSTRUCT& message);
    void HandleActivation(HWND window);
    void HandleActiveMessage(const CWPRETSTRUCT& message);
    void HandleDrawing(const DRAWITEMSTRUCT& item);
    void HandleCommand(int notification, HWND control);
    void HandleScroll(const SCROLLINFO& info);

    // The function and what stands beside its boxes.
    void FindFunction();
    void Rebuild();
    void TearDown();
    void MakeOverlay(int box, ArgumentUi kind);
    void MakeList();
    int OverlayIndex(HWND window) const;
    ArgumentUi KindOf(int box) const;

    // Lists, buttons, keys.
    void OpenUi(int box);
    void OpenList(int box);
    void PlaceList();
    void TakeSelection();
    void CloseList();
    void OpenButton(int box);
    bool HandleKey(WORD key);
    bool HandleListKey(WORD key);
    bool IsBound(WORD key) const;

    IXlWizExUIFunctionRegistry& registry_;
    IXlWizExFunction* function_ = nullptr;
    std::string function_name_;
    WizardNameReader name_reader_;

    HHOOK message_hook_ = nullptr;
    HHOOK keyboard_hook_ = nullptr;
    HCURSOR cursor_ = nullptr;
    HFONT font_ = nullptr;
    unsigned system_major_;
    WizardTheme theme_;

    HWND dialog_ = nullptr;
    State state_ = State::idle;
    bool rebuilds_on_size_ = false;
    bool are_controls_made_ = false;
    WizardControls controls_;
    std::array<HWND, kWizardBoxes> overlays_{};
    HWND list_ = nullptr;
    int first_visible_ = 0;
    int focused_index_ = -1;
    int open_index_ = -1;
};

} // namespace metrify
