#pragma once

// A host with windows and automation in this process, and an add-in that is part of the test.

#include "host/automation/automation_host.h"
#include "host/core/host_exports.h"
#include "integration/application/integration_exports.h"
#include "integration/application/object_text.h"
#include "integration/application/xll_com.h"
#include "integration/real_integration.h"
#include "tests/host/calling.h"
#include "xllrt/app/app_registration.h"
#include "xllrt/app/observer_function.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/thread_state.h"

#include <gtest/gtest.h>

namespace metrify::host {

/// The exports of the module of this test.
inline std::map<std::string, void*> AddInEntries() {
    return {
        {"xlCheckInstance", EntryOf(xlCheckInstance)},
        {"CXllComImpl_OnSheetActivate", EntryOf(CXllComImpl_OnSheetActivate)},
        {"CXllComImpl_OnSheetDeactivate", EntryOf(CXllComImpl_OnSheetDeactivate)},
        {"CXllComImpl_OnCalculate", EntryOf(CXllComImpl_OnCalculate)},
        {"CXlApp_ObserverEventHandler12", EntryOf(CXlApp_ObserverEventHandler12)},
        {"CXlApp_ObserverEventHandler4", EntryOf(CXlApp_ObserverEventHandler4)},
        {"xlAutoFree12", EntryOf(xlAutoFree12)},
        {"xlAutoFree", EntryOf(xlAutoFree)},
        {"xlAutoRemove", EntryOf(xlAutoRemove)},
    };
}

/// Created first and destroyed last in a test. Restores the state of the process.
class IntegrationHost {
  public:
    explicit IntegrationHost(int version, std::map<std::string, void*> entries = AddInEntries(),
                             const std::u16string& path = u"C:\\AddIns\\Test.xll")
        : context_(CallContext::command), host(version), automation(host) {
        AllocateThreadStates();
        Adopt(host, std::move(entries), path);
        ConnectHost(NewestHostPrimitives());
        DetectHostVersion();
    }
    ~IntegrationHost() { ReleaseThreadStates(); }
    IntegrationHost(const IntegrationHost&) = delete;
    IntegrationHost& operator=(const IntegrationHost&) = delete;

    ApplicationSettings& settings() { return automation.application().settings; }
    FaultSwitch& faults() { return host.state().faults; }
    std::size_t books() { return host.state().books.count(); }
    std::size_t sinks() { return automation.application().events().count(); }

    /// Fires an event with its arguments in the order in which they are declared.
    HRESULT Fire(DISPID event, const std::vector<ComVariant>& arguments, VARIANT_BOOL* cancel = nullptr) {
        std::vector<VARIANT> given;
        for (const ComVariant& argument : arguments)
            given.push_back(argument.Get());
        if (cancel) {
            VARIANT& reference = given.emplace_back();
            VariantInit(&reference);
            V_VT(&reference) = VT_BYREF | VT_BOOL;
            V_BOOLREF(&reference) = cancel;
        }
        return automation.application().events().Fire(event, given);
    }

    ComVariant Workbook() { return ComVariant(automation.MakeWorkbook(u"Book1").Get()); }
    ComVariant Sheet() { return ComVariant(automation.MakeWorksheet(u"Book1", u"Sheet1").Get()); }
    ComVariant Range() {
        return ComVariant(
            automation
                .MakeRange(automation.MakeWorksheet(u"Book1", u"Sheet1"), {u"$A$1", u"[Book1]Sheet1!$A$1"})
                .Get());
    }

  private:
    ContextScope context_;

  public:
    Host host;
    AutomationHost automation;
};

/// The add-in's connection to the host, with its last failure.
struct HostConnection {
    CXllCom com;
    ComFailure failure;

    bool Init() { return com.Init(failure); }
};

/// The code of a failure whose text is a complete sentence.
inline constexpr HRESULT kSentenceCode = 1;

/// Expects the search for the host to fail with this text and this code.
inline void ExpectFailure(HostConnection& connection, const std::u16string& text,
                          HRESULT code = kSentenceCode) {
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(connection.failure.text, text);
    EXPECT_EQ(connection.failure.code, code);
    EXPECT_EQ(connection.com.Application(), nullptr);
}

/// Registers the program names of the host during its lifetime.
struct ProgramNames {
    ProgramNames() { RegisterProgramNames(); }
    ~ProgramNames() { UnregisterProgramNames(); }
    ProgramNames(const ProgramNames&) = delete;
    ProgramNames& operator=(const ProgramNames&) = delete;
};

} // namespace metrify::host
