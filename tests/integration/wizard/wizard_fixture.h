#pragma once

// The hook on a formula dialog of this process, and simulated actions of the user.

#include "host/automation/wizard_dialog.h"
#include "integration/wizard/wizard_hook.h"
#include "tests/integration/integration_host.h"
#include "tests/integration/wizard/wizard_function.h"

#include <optional>

namespace metrify::host {

/// The boxes that have overlays.
using Standing = std::vector<bool>;

// ---- Actions of the user

inline void PumpMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

inline void SendKey(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
}

inline void Press(WORD key) {
    SendKey(key, 0);
    SendKey(key, KEYEVENTF_KEYUP);
    PumpMessages();
}

inline void PressWith(WORD modifier, WORD key) {
    // Pending key events of the display are processed first; that also resets the system's cached key state.
    constexpr DWORD kMoment = 80;
    Sleep(kMoment);
    PumpMessages();
    SendKey(modifier, 0);
    Press(key);
    SendKey(modifier, KEYEVENTF_KEYUP);
    PumpMessages();
}

inline void Click(HWND overlay) {
    SendMessageA(overlay, BM_CLICK, 0, 0);
}

// ---- What is visible

inline CWizardHook& Hook() {
    return *CWizardHook::Instance();
}

inline Standing Overlays() {
    Standing standing;
    for (int box = 0; box < kDialogBoxes; ++box)
        standing.push_back(Hook().Overlay(box) != nullptr);
    return standing;
}

inline RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

class WizardHookTest : public testing::Test {
  protected:
    explicit WizardHookTest(int version = 16) : host(version) {
        registry.Add("Convert", function);
        CWizardHook::Install(registry);
    }
    ~WizardHookTest() override { CWizardHook::Remove(); }

    /// Makes a dialog and names the function to the hook.
    void Make(WizardDialogOptions options = {}) {
        options.owner = host.automation.windows().main();
        if (options.function.empty())
            options.function = u"Convert";
        dialog.emplace(host.automation.context(), options);
        Hook().SetFunctionName("Convert");
    }

    void Open(WizardDialogOptions options = {}) {
        Make(std::move(options));
        dialog->Show();
    }

    /// Opens the dialog with the keyboard focus.
    void OpenInFront(WizardDialogOptions options = {}) {
        Open(std::move(options));
        SetForegroundWindow(dialog->window());
    }

    void Select(int item) {
        SendMessageA(Hook().List(), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        Notify(Hook().List(), CBN_SELENDOK);
    }

    int Selection() { return static_cast<int>(SendMessageA(Hook().List(), CB_GETCURSEL, 0, 0)); }

    /// Sends the dialog a notification of a control.
    void Notify(HWND control, int notification) {
        SendMessageA(dialog->window(), WM_COMMAND, MAKEWPARAM(0, notification),
                     reinterpret_cast<LPARAM>(control));
    }

    IntegrationHost host;
    CXlWizExUIFunctionRegistry registry;
    WizardFunction function;
    std::optional<WizardDialog> dialog;
};

} // namespace metrify::host
