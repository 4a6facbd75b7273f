// Shows the formula dialog with a list and a button on its boxes, for screenshots: first as it opens, then
// with the list open, a few seconds each. A second argument has it drawn without a theme.

#include "host/automation/wizard_dialog.h"
#include "integration/wizard/wizard_hook.h"
#include "tests/integration/wizard/wizard_function.h"
#include "xllrt/gate/host_version.h"

#include <cstdlib>
#include <objbase.h>

namespace metrify::host {
namespace {

void PumpFor(DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    MSG message;
    while (GetTickCount64() < end) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        Sleep(20);
    }
}

// How long the dialog and then the open list are shown.
void Show(DWORD milliseconds, bool is_themed) {
    constexpr int kVersion = 16;
    SetHostVersion(kVersion);
    CXlWizExUIFunctionRegistry registry;
    registry.usesThemes = is_themed;
    WizardFunction function;
    registry.Add("Convert", function);
    CWizardHook::Install(registry);
    {
        WizardDialog dialog(std::make_shared<ObjectContext>(), {.function = u"Convert", .arguments = 3});
        CWizardHook::Instance()->SetFunctionName("Convert");
        dialog.Show();
        dialog.SetText(0, "\"ft\"");
        dialog.SetText(1, "3.5");
        PumpFor(milliseconds);
        SendMessageA(CWizardHook::Instance()->Overlay(0), BM_CLICK, 0, 0);
        PumpFor(milliseconds);
    }
    CWizardHook::Remove();
}

} // namespace
} // namespace metrify::host

int main(int argc, char** argv) {
    constexpr DWORD kDefault = 4000;
    CoInitialize(nullptr);
    metrify::host::Show(argc > 1 ? static_cast<DWORD>(std::strtoul(argv[1], nullptr, 10)) : kDefault,
                        argc <= 2);
    CoUninitialize();
    return 0;
}
