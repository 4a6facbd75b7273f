#pragma once

// A host with windows and automation for whole modules.

#include "host/automation/automation_host.h"
#include "host/program/program_platform.h"
#include "host/sheet/utf8.h"
#include "tests/integration/integration_host.h"

#include <filesystem>

namespace metrify::host {

/// The path of a file beside this program.
inline std::string Beside(const char* name) {
    return ToUtf8(std::filesystem::path(FromUtf8(ModuleBesideProgram())).replace_filename(name).u16string());
}

/// A host for modules.
class ModuleHost {
  public:
    explicit ModuleHost(int version) : host(version), automation(host) { automation.ShowAsRunning(); }

    bool Open(const char* name) {
        std::string error;
        EXPECT_TRUE(host.Load(Beside(name), error)) << error;
        return host.CallEntryPoint("xlAutoOpen") == 1;
    }

    void Close() {
        host.CallEntryPoint("xlAutoClose");
        host.Unload();
    }

    std::size_t Sinks() { return automation.application().events().count(); }

    /// True if an observer keeps a workbook open.
    bool IsKept(const std::u16string& name) {
        VARIANT_BOOL cancel = VARIANT_FALSE;
        const ComPtr<IDispatch> workbook = automation.MakeWorkbook(name);
        VARIANT arguments[2];
        V_VT(&arguments[0]) = VT_DISPATCH;
        V_DISPATCH(&arguments[0]) = workbook.Get();
        V_VT(&arguments[1]) = VT_BYREF | VT_BOOL;
        V_BOOLREF(&arguments[1]) = &cancel;
        automation.application().events().Fire(1570, arguments);
        return cancel == VARIANT_TRUE;
    }

    /// Fires the event of a workbook that was opened.
    void FireOpened(const std::u16string& name) {
        const ComPtr<IDispatch> workbook = automation.MakeWorkbook(name);
        VARIANT argument;
        V_VT(&argument) = VT_DISPATCH;
        V_DISPATCH(&argument) = workbook.Get();
        EXPECT_EQ(automation.application().events().Fire(1567, {&argument, 1}), S_OK);
    }

    const ProgramNames names;
    Host host;
    AutomationHost automation;
};

} // namespace metrify::host
