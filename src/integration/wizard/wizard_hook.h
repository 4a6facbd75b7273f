#pragma once

// Adds lists and buttons to the boxes of the host's formula dialog. The host has no interface for that, so
// its window messages are hooked.

#include "integration/wizard/wizard_editor.h"
#include "integration/wizard/wizard_name.h"
#include "integration/wizard/wizard_registry.h"
#include "integration/wizard/wizard_theme.h"

#include <memory>
#include <string>
#include <windows.h>

namespace metrify {

class CWizardHook {
  public:
    /// Installs the hooks for the calling thread. Throws a `CXlRuntimeException` if they are installed or
    /// can't be. The registry must outlive them.
    static void Install(IXlWizExUIFunctionRegistry& registry);
    /// Removes the hooks and the windows added to the dialog.
    static void Remove();
    /// For the end of the process, when no window may be called: forgets the hook without a call.
    static void Abandon();
    /// The installed hook, or null.
    static CWizardHook* Instance();

    ~CWizardHook();
    CWizardHook(const CWizardHook&) = delete;
    CWizardHook& operator=(const CWizardHook&) = delete;

    /// Sets the function that the created dialog will show, until the next dialog is created.
    void SetFunctionName(std::string name) { function_name_ = std::move(name); }

    /// The state of the dialog: none, created, or active with its controls found.
    enum class State { idle, created, active };
    State Now() const { return state_; }
    /// The overlay of a box, or null.
    HWND Overlay(int box) const { return overlays_.Overlay(box); }
    HWND List() const { return overlays_.List(); }
    /// The box whose list is open; -1 if none is.
    int OpenIndex() const { return editor_.OpenIndex(); }

  private:
    explicit CWizardHook(IXlWizExUIFunctionRegistry& registry);

    static LRESULT CALLBACK MessageProcedure(int code, WPARAM first, LPARAM second);
    static LRESULT CALLBACK KeyboardProcedure(int code, WPARAM key, LPARAM flags);

    void HandleMessage(const CWPRETSTRUCT& message);
    void HandleCreation(const CWPRETSTRUCT& message);
    void HandleActivation(HWND window);
    void HandleActiveMessage(const CWPRETSTRUCT& message);
    void HandleDrawing(const DRAWITEMSTRUCT& item);
    void HandleCommand(int notification, HWND control);
    void HandleScroll(const SCROLLINFO& info);

    void FindFunction();
    void Rebuild();
    void TearDown();

    IXlWizExUIFunctionRegistry& registry_;
    std::string function_name_;
    WizardNameReader name_reader_;
    HHOOK message_hook_ = nullptr;
    HHOOK keyboard_hook_ = nullptr;

    State state_ = State::idle;
    bool rebuilds_on_size_ = false;
    WizardTheme theme_;
    WizardDialog dialog_;
    WizardOverlays overlays_;
    WizardEditor editor_;
};

} // namespace metrify
