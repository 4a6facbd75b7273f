// The end of a process with a loaded module, and a module that the host still has a pointer to. Each needs a
// separate process: the test program starts itself again with a test that is otherwise disabled.

#include "integration/process_end.h"
#include "integration/wizard/wizard_hook.h"
#include "tests/called_during_event.h"
#include "tests/integration/counted_system.h"
#include "tests/integration/module_host.h"
#include "tests/integration/replaced_call.h"

namespace metrify::host {
namespace {

constexpr UINT kEnded = 7;   // the process ended normally
constexpr UINT kCalled = 66; // a forbidden call was made

// Runs a disabled test in a separate process. Returns the exit status.
DWORD RunAlone(const std::string& test) {
    std::array<char, MAX_PATH> program{};
    GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::string command = std::string("\"") + program.data() +
                          "\" --gtest_brief=1 --gtest_also_run_disabled_tests --gtest_filter=" + test;
    STARTUPINFOA start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    DWORD status = 0;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        return status;
    constexpr DWORD kPatience = 60000;
    if (WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 1);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

// Replaces functions that must no longer be called.
void EndAsCalled() {
    TerminateProcess(GetCurrentProcess(), kCalled);
}

// ---- The end of a process

class process_alone : public testing::Test {
  protected:
    process_alone() : modules(16) {}

    ModuleHost modules;
};

constexpr std::size_t kQueryInterface = 0;
constexpr std::size_t kRelease = 2;
constexpr std::size_t kFindConnectionPoint = 4;
constexpr std::size_t kUnadvise = 6;

TEST_F(process_alone, DISABLED_with_a_connected_sink) {
    ASSERT_TRUE(modules.Open("Observing.xll"));
    ASSERT_EQ(modules.Sinks(), 1U);
    auto& application = modules.automation.application();
    IConnectionPointContainer* const container = &application;
    const HMODULE module = GetModuleHandleA("Observing.xll");
    const ReplacedPointer calls[] = {
        {MethodOf(static_cast<IDispatch*>(&application), kQueryInterface), AddressOf(EndAsCalled)},
        {MethodOf(static_cast<IDispatch*>(&application), kRelease), AddressOf(EndAsCalled)},
        {MethodOf(container, kFindConnectionPoint), AddressOf(EndAsCalled)},
        {MethodOf(&application.events(), kUnadvise), AddressOf(EndAsCalled)},
        {ImportedFunction("CoUninitialize", module), AddressOf(EndAsCalled)},
        {ImportedFunction("Sleep", module), AddressOf(EndAsCalled)},
    };
    ExitProcess(kEnded);
}

TEST(process_end, calls_no_COM_object_and_does_not_wait) {
    EXPECT_EQ(RunAlone("process_alone.DISABLED_with_a_connected_sink"), kEnded);
}

TEST_F(process_alone, DISABLED_with_an_unloading) {
    ASSERT_TRUE(modules.Open("Observing.xll"));
    ASSERT_EQ(modules.Sinks(), 1U);
    modules.Close();
    EXPECT_EQ(modules.Sinks(), 0U);
    EXPECT_EQ(GetModuleHandleA("Observing.xll"), nullptr);
    ExitProcess(HasFailure() ? 1 : kEnded);
}

TEST(process_end, differs_from_an_unloading_which_disconnects) {
    EXPECT_EQ(RunAlone("process_alone.DISABLED_with_an_unloading"), kEnded);
}

int left_apartments = 0;

void WINAPI NoteLeaving() {
    ++left_apartments;
}

TEST(process_end, forgets_the_host_without_a_call) {
    IntegrationHost host(16);
    CXllApp application;
    left_apartments = 0;
    int references = 0;
    {
        const ReplacedPointer leaving(ImportedFunction("CoUninitialize"), AddressOf(NoteLeaving));
        HostConnection connection;
        ASSERT_TRUE(connection.Init());
        ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
        references = host.automation.ledger().references();
        AbandonHost();
        EXPECT_EQ(connection.com.Application(), nullptr);
        EXPECT_FALSE(connection.com.AreEventsConnected());
        EXPECT_EQ(CXllCom::Instance(), nullptr);
    }
    EXPECT_EQ(left_apartments, 0);
    EXPECT_EQ(host.automation.ledger().references(), references);
    EXPECT_EQ(host.sinks(), 1U);
    const ComPtr<IDispatch> sink = host.automation.application().events().First();
    EXPECT_EQ(sink->AddRef(), 4U); // of the add-in, the host, the test, and this one
    CoUninitialize();
}

TEST(process_end, forgets_the_hook_without_a_call) {
    IntegrationHost host(16);
    CXlWizExUIFunctionRegistry registry;
    CountedSystem system(host.faults());
    CWizardHook::Install(registry);
    AbandonHost();
    EXPECT_EQ(CWizardHook::Instance(), nullptr);
    CWizardHook::Remove();
    EXPECT_EQ(system.Fonts().size(), 1U);
    const std::set<HHOOK> hooks = system.Hooks();
    EXPECT_EQ(hooks.size(), 2U);
    for (const HHOOK hook : hooks)
        UnhookWindowsHookEx(hook);
}

// ---- Closing during an event

ModuleHost* closing_host = nullptr;
int closings = 0;

void CloseAndUnload() {
    ++closings;
    closing_host->Close();
}

void CloseAlone() {
    ++closings;
    EXPECT_EQ(closing_host->host.CallEntryPoint("xlAutoClose"), 1);
}

TEST_F(process_alone, DISABLED_with_a_close_during_an_event) {
    for (void (*const close)() : {CloseAlone, CloseAndUnload}) {
        ASSERT_TRUE(closings == 1 || modules.Open("Observing.xll"));
        closing_host = &modules;
        const int closings_before = closings;
        modules.FireOpened(FromUtf8(TextOfCall(close)));
        EXPECT_EQ(closings, closings_before + 1);
        EXPECT_EQ(modules.host.state().ledger.Counts().Outstanding(), 0U);
        EXPECT_TRUE(modules.automation.application().settings.displayAlerts);
    }
    // The events return to the module.
    EXPECT_NE(GetModuleHandleA("Observing.xll"), nullptr);
    EXPECT_FALSE(modules.IsKept(u"Keep")) << "the host knows none of its functions any more";
    ExitProcess(HasFailure() ? 1 : kEnded);
}

TEST(closing_during_an_event, returns_to_the_module_which_stays_in_memory) {
    EXPECT_EQ(RunAlone("process_alone.DISABLED_with_a_close_during_an_event"), kEnded);
}

// ---- A busy host

HRESULT STDMETHODCALLTYPE StayBusy(IConnectionPoint* /*point*/, DWORD /*cookie*/) {
    return static_cast<HRESULT>(0x8001010A);
}

TEST_F(process_alone, DISABLED_with_a_host_that_stays_busy) {
    ASSERT_TRUE(modules.Open("Observing.xll"));
    const ReplacedPointer busy(MethodOf(&modules.automation.application().events(), kUnadvise),
                               AddressOf(StayBusy));
    modules.Close();
    EXPECT_EQ(modules.Sinks(), 1U);
    EXPECT_NE(GetModuleHandleA("Observing.xll"), nullptr);
    EXPECT_FALSE(modules.IsKept(u"Keep"));
    ExitProcess(HasFailure() ? 1 : kEnded);
}

TEST(busy_host_of_a_module, may_call_into_it_after_its_unloading) {
    EXPECT_EQ(RunAlone("process_alone.DISABLED_with_a_host_that_stays_busy"), kEnded);
}

} // namespace
} // namespace metrify::host
