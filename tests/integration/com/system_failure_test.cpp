// Failures of the operating system.

#include "integration/wizard/wizard_hook.h"
#include "tests/integration/integration_host.h"
#include "tests/integration/replaced_call.h"

#include <cstdlib>
#include <new>
#include <objbase.h>

namespace {
bool is_memory_refused = false;
}

// The allocation of the sink can be made to fail.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return is_memory_refused ? nullptr : std::malloc(size);
}

namespace metrify::host {
namespace {

// ---- Memory

TEST(system_failure, no_memory_for_the_sink) {
    IntegrationHost host(16);
    CXllApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    is_memory_refused = true;
    const bool is_connected = connection.com.SetEvents(true, connection.failure);
    is_memory_refused = false;
    EXPECT_FALSE(is_connected);
    EXPECT_EQ(connection.failure.text, u"CreateInstance");
    EXPECT_EQ(connection.failure.code, E_OUTOFMEMORY);
    EXPECT_EQ(host.sinks(), 0U);
}

// ---- The sink of events

HRESULT STDMETHODCALLTYPE RefuseInterface(IUnknown*, REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

TEST(system_failure, the_sink_gives_no_identity) {
    constexpr std::size_t kQueryInterface = 0;
    IntegrationHost host(16);
    CXllApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    const int references = host.automation.ledger().references();
    {
        const auto another = CDispatchSink::Create(nullptr);
        const ReplacedPointer refusing(MethodOf(another.Get(), kQueryInterface), AddressOf(RefuseInterface));
        EXPECT_FALSE(connection.com.SetEvents(true, connection.failure));
    }
    EXPECT_EQ(connection.failure.text, u"QueryInterface");
    EXPECT_EQ(connection.failure.code, E_NOINTERFACE);
    EXPECT_FALSE(connection.com.AreEventsConnected());
    EXPECT_EQ(host.sinks(), 0U);
    EXPECT_EQ(host.automation.ledger().references(), references);
    EXPECT_TRUE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(connection.failure.text, u"");
    EXPECT_EQ(host.sinks(), 1U);
}

struct SheetApp final : CXllApp {
    bool OnSheetActivate(XlHostObject* /*sheet*/) override {
        ++activations;
        return false;
    }
    int activations = 0;
};

HRESULT STDMETHODCALLTYPE KeepSink(IConnectionPoint*, DWORD) {
    return E_FAIL;
}

TEST(system_failure, a_host_that_keeps_the_sink_reaches_no_application) {
    constexpr std::size_t kUnadvise = 6;
    IntegrationHost host(16);
    SheetApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
    const ReplacedPointer keeping(MethodOf(&host.automation.application().events(), kUnadvise),
                                  AddressOf(KeepSink));
    EXPECT_FALSE(connection.com.SetEvents(false, connection.failure));
    EXPECT_EQ(host.sinks(), 1U);
    EXPECT_EQ(host.Fire(1561, {host.Sheet()}), S_OK);
    EXPECT_EQ(application.activations, 0);
}

// ---- Hooks

template <int refused>
HHOOK WINAPI SetHookUnless(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    using Function = decltype(&SetWindowsHookExA);
    static const auto original = reinterpret_cast<Function>(
        AddressOf(GetProcAddress(GetModuleHandleA("user32.dll"), "SetWindowsHookExA")));
    if (kind != refused)
        return original(kind, procedure, module, thread);
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

template <int refused>
void ExpectNoHook(const char* text) {
    CXlWizExUIFunctionRegistry registry;
    {
        const ReplacedPointer refusing(ImportedFunction("SetWindowsHookExA"),
                                       AddressOf(SetHookUnless<refused>));
        try {
            CWizardHook::Install(registry);
            FAIL() << "installed";
        } catch (const CXlRuntimeException& exception) {
            EXPECT_STREQ(exception.what(), text);
        }
        EXPECT_EQ(CWizardHook::Instance(), nullptr);
    }
    EXPECT_NO_THROW(CWizardHook::Install(registry));
    CWizardHook::Remove();
}

TEST(system_failure, no_hook_for_messages) {
    ExpectNoHook<WH_CALLWNDPROCRET>("SetWindowsHookEx failed for WH_CALLWNDPROCRET. hr=80070005");
}

TEST(system_failure, no_hook_for_keys) {
    ExpectNoHook<WH_KEYBOARD>("SetWindowsHookEx failed for WH_KEYBOARD. hr=80070005");
}

// ---- The running object table

HRESULT WINAPI MakeNoContext(DWORD, IBindCtx** context) {
    *context = nullptr;
    return E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE RefuseObject(IUnknown*, IUnknown** object) {
    *object = nullptr;
    return E_ACCESSDENIED;
}

HRESULT STDMETHODCALLTYPE RefuseCall(IUnknown*) {
    return E_FAIL;
}

// The numbers of methods in their interfaces.
constexpr std::size_t kGetRunningObjectTable = 8;
constexpr std::size_t kEnumRunning = 9;
constexpr std::size_t kReset = 5;

// No host is registered as active, so the search reads the table.
class running_objects_failure : public testing::Test {
  protected:
    running_objects_failure() {
        CreateBindCtx(0, context.Receive());
        context->GetRunningObjectTable(table.Receive());
        table->EnumRunning(monikers.Receive());
    }

    ProgramNames names;
    IntegrationHost host{7};
    CXllApp application;
    HostConnection connection;
    ComPtr<IBindCtx> context;
    ComPtr<IRunningObjectTable> table;
    ComPtr<IEnumMoniker> monikers;
};

TEST_F(running_objects_failure, no_context) {
    const ReplacedPointer refusing(ImportedFunction("CreateBindCtx"), AddressOf(MakeNoContext));
    ExpectFailure(connection, u"CreateBindCtx() failed with error 0x8007000E");
}

TEST_F(running_objects_failure, no_table) {
    const ReplacedPointer refusing(MethodOf(context.Get(), kGetRunningObjectTable), AddressOf(RefuseObject));
    ExpectFailure(connection, u"GetRunningObjectTable() failed with error 0x80070005");
}

TEST_F(running_objects_failure, no_list) {
    const ReplacedPointer refusing(MethodOf(table.Get(), kEnumRunning), AddressOf(RefuseObject));
    ExpectFailure(connection, u"EnumRunning() failed with error 0x80070005");
}

TEST_F(running_objects_failure, no_first_entry) {
    const ReplacedPointer refusing(MethodOf(monikers.Get(), kReset), AddressOf(RefuseCall));
    ExpectFailure(connection, u"Reset() failed with error 0x80004005");
}

// ---- The window of a workbook

HRESULT WINAPI GiveNothing(HWND, DWORD, REFIID, void** object) {
    *object = nullptr;
    return S_OK;
}

TEST(system_failure, a_workbook_window_that_gives_no_object_and_no_failure) {
    IntegrationHost host(16);
    CXllApp application;
    const ReplacedPointer giving(LoadedFunction(&SystemFunctions::accessible_object_from_window),
                                 AddressOf(GiveNothing));
    HostConnection connection;
    ExpectFailure(connection, u"AccessibleObjectFromWindow", E_FAIL);
}

// ---- The active object

TEST(system_failure, an_active_object_that_cannot_be_called_by_name) {
    constexpr CLSID kApplicationClass = {
        0x00024500, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    ComPtr<IBindCtx> silent;
    CreateBindCtx(0, silent.Receive());
    DWORD cookie = 0;
    ASSERT_EQ(RegisterActiveObject(silent.Get(), kApplicationClass, ACTIVEOBJECT_STRONG, &cookie), S_OK);
    HostConnection connection;
    ExpectFailure(connection, u"QueryInterface(IID_IDispatch) failed with error 0x80004002");
    RevokeActiveObject(cookie, nullptr);
}

} // namespace
} // namespace metrify::host
