// Sessions with the formula dialog in use, in each of which one call fails: a call of the host, of its
// objects, or of the system for a resource. Afterwards no hook, reference, window of the hook, font or theme
// is left, and the dialog's windows are unchanged.

#include "tests/integration/counted_system.h"
#include "tests/integration/fault_injection.h"
#include "tests/integration/recorded_theme.h"
#include "tests/integration/wizard/wizard_fixture.h"

namespace metrify::host {
namespace {

class QuietApp final : public CXllApp {
  public:
    using CXllApp::CXllApp;
    // There is no user to ask.
    bool ConfirmRegistrationFailure() override { return true; }
};

std::vector<HWND> WindowsOf(const WizardDialog& dialog) {
    std::vector<HWND> windows = {dialog.window(), dialog.scroll_bar()};
    for (int box = 0; box < kDialogBoxes; ++box)
        windows.push_back(dialog.box(box));
    return windows;
}

// The window procedures.
std::vector<LONG_PTR> ProceduresOf(const std::vector<HWND>& windows) {
    std::vector<LONG_PTR> procedures;
    std::transform(windows.begin(), windows.end(), std::back_inserter(procedures),
                   [](HWND window) { return GetWindowLongPtrA(window, GWLP_WNDPROC); });
    return procedures;
}

struct Session {
    IntegrationHost host{16};
    RecordedTheme theme;
    CountedSystem system{host.faults()};
    CXlRealIntegration integration;
    WizardFunction function;
    bool was_used = false;

    Session() {
        theme.faults = &host.faults();
        function.key = {.key = VK_F4, .modifier = 0, .content_mode = 3};
    }

    // An add-in from opening to closing, with two dialogs. The second one outlives the add-in.
    void Run() {
        std::optional<WizardDialog> dialog;
        std::vector<LONG_PTR> procedures;
        {
            QuietApp application(integration);
            static_cast<CXlWizExUIFunctionRegistry&>(*application.WizardRegistry()).Add("Convert", function);
            OpenAddIn();
            was_used = CWizardHook::Instance() != nullptr;
            if (was_used) {
                dialog.emplace(host.automation.context(), Options());
                Use(*dialog);
                dialog->Close();
                dialog.emplace(host.automation.context(), Options());
                procedures = ProceduresOf(WindowsOf(*dialog));
                Use(*dialog);
            }
            CloseAddIn();
            ExpectNothingLeft();
            application.OnProcessDetach();
            UnregisterAll(application);
        }
        SetAddInOpened(false);
        EXPECT_EQ(dialog ? ProceduresOf(WindowsOf(*dialog)) : procedures, procedures);
    }

    WizardDialogOptions Options() {
        return {.owner = host.automation.windows().main(), .function = u"Convert", .arguments = 3};
    }

    // Opens a list, selects an item and closes it; a button; a key; scrolling; another size; another theme.
    static void Use(WizardDialog& dialog) {
        Hook().SetFunctionName("Convert");
        dialog.Show();
        const auto click = [](int box) {
            if (const HWND overlay = Hook().Overlay(box)) {
                RedrawWindow(overlay, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
                Click(overlay);
            }
        };
        const auto notify = [&dialog](int notification) {
            SendMessageA(dialog.window(), WM_COMMAND, MAKEWPARAM(0, notification),
                         reinterpret_cast<LPARAM>(Hook().List()));
        };
        click(0);
        SendMessageA(Hook().List(), CB_SETCURSEL, 1, 0);
        notify(CBN_SELENDOK);
        notify(CBN_CLOSEUP);
        click(1);
        SetForegroundWindow(dialog.window());
        SetFocus(dialog.box(1));
        Press(VK_F4);
        dialog.ScrollTo(1);
        SendMessageA(dialog.window(), WM_THEMECHANGED, 0, 0);
        dialog.ScrollTo(0);
        SetWindowPos(dialog.box(4), nullptr, 0, 0, 200, 22, SWP_NOMOVE | SWP_NOZORDER);
        click(0); // stays open
    }

    void ExpectNothingLeft() {
        EXPECT_EQ(CWizardHook::Instance(), nullptr);
        EXPECT_TRUE(system.Hooks().empty());
        EXPECT_TRUE(system.Fonts().empty());
        EXPECT_TRUE(system.Controls().empty());
        EXPECT_EQ(theme.OpenCount(), 0U);
    }
};

TEST(fault_injection, in_an_application_with_the_formula_dialog_in_use) {
    Session session;
    std::size_t used = 0;
    const std::size_t calls = FailEachCall(session.host, 0, [&session, &used] {
        session.Run();
        used += session.was_used ? 1 : 0;
    });
    EXPECT_GT(calls, 100U);
    EXPECT_GT(used, calls / 2);
    Report("formula dialog", calls);
}

} // namespace
} // namespace metrify::host
