// Whole modules in a host with windows and automation, from loading to unloading.

#include "tests/integration/module_host.h"

#include <chrono>
#include <iostream>
#include <thread>

namespace metrify::host {
namespace {

class observing_module : public testing::TestWithParam<int> {};

TEST_P(observing_module, cancels_an_event_of_the_host) {
    ModuleHost modules(GetParam());
    ASSERT_TRUE(modules.Open("Observing.xll"));
    EXPECT_EQ(modules.Sinks(), 1U);
    EXPECT_TRUE(modules.IsKept(u"Keep"));
    EXPECT_FALSE(modules.IsKept(u"Other"));
    modules.Close();
}

TEST_P(observing_module, leaves_nothing_over) {
    ModuleHost modules(GetParam());
    const int objects = modules.automation.ledger().objects();
    const int references = modules.automation.ledger().references();
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(modules.Open("Observing.xll"));
        EXPECT_TRUE(modules.IsKept(u"Keep"));
        EXPECT_GT(modules.automation.ledger().references(), references);
        modules.Close();
        EXPECT_EQ(modules.Sinks(), 0U);
        EXPECT_EQ(modules.automation.ledger().objects(), objects);
        EXPECT_EQ(modules.automation.ledger().references(), references);
    }
    EXPECT_EQ(modules.host.state().ledger.Counts().Outstanding(), 0U);
}

INSTANTIATE_TEST_SUITE_P(versions, observing_module, testing::Values(6, 11, 12, 16));

// Copies of a module: one that the host still has a pointer to stays in memory and cannot be opened again.
class ModuleCopies {
  public:
    explicit ModuleCopies(const char* name) : name_(name) { Next(); }
    ~ModuleCopies() {
        for (int i = 1; i <= count_; ++i)
            DeleteFileA(Beside(Name(i).c_str()).c_str()); // fails for those that are loaded
    }
    ModuleCopies(const ModuleCopies&) = delete;
    ModuleCopies& operator=(const ModuleCopies&) = delete;

    void Next() { CopyFileA(Beside(name_).c_str(), Beside(Name(++count_).c_str()).c_str(), FALSE); }
    std::string Current() const { return Name(count_); }
    bool IsInMemory() const { return GetModuleHandleA(Current().c_str()) != nullptr; }

  private:
    std::string Name(int number) const { return "Copy" + std::to_string(number) + "Of" + name_; }

    const char* name_;
    int count_ = 0;
};

TEST(observing_module, leaves_nothing_over_whichever_call_fails) {
    ModuleHost modules(16);
    ModuleCopies copies("Observing.xll");
    const auto live = [&modules, &copies] {
        if (modules.Open(copies.Current().c_str()))
            modules.IsKept(u"Keep");
        modules.Close();
    };
    live();
    const int objects = modules.automation.ledger().objects();
    const int references = modules.automation.ledger().references();
    std::size_t n = 0;
    std::size_t calls = 0;
    std::size_t kept = 0;
    do {
        modules.host.state().faults.FailCall(++n);
        live();
        calls = modules.host.state().faults.calls();
        modules.host.state().faults.Stop();
        modules.automation.application().settings.displayAlerts = true;
        EXPECT_EQ(copies.IsInMemory(), modules.Sinks() > 0) << "call " << n << " failed";
        if (modules.Sinks() > 0) {
            EXPECT_FALSE(modules.IsKept(u"Keep"));
            modules.automation.application().events().Clear();
            copies.Next();
            ++kept;
        }
        EXPECT_EQ(modules.automation.ledger().objects(), objects) << "call " << n << " failed";
        EXPECT_EQ(modules.automation.ledger().references(), references) << "call " << n << " failed";
    } while (calls >= n);
    std::cout << "module: each of " << n - 1 << " calls failed once\n";
    EXPECT_GT(n, 30U);
    EXPECT_EQ(kept, 3U); // the calls that disconnect
}

TEST(metrify_module, connects_to_no_events_and_hooks_nothing) {
    ModuleHost modules(16);
    const int references = modules.automation.ledger().references();
    ASSERT_TRUE(modules.Open("Metrify.xll"));
    EXPECT_EQ(modules.Sinks(), 0U);
    EXPECT_EQ(modules.automation.ledger().references(), references);
    modules.Close();
    EXPECT_EQ(modules.automation.ledger().references(), references);
}

TEST(metrify_module, shows_the_entries_of_the_integration) {
    ModuleHost modules(16);
    ASSERT_TRUE(modules.Open("Metrify.xll"));
    for (const char* name : {"xlCheckInstance", "CXllComImpl_OnSheetActivate",
                             "CXllComImpl_OnSheetDeactivate", "CXllComImpl_OnCalculate"})
        EXPECT_EQ(modules.host.CallEntryPoint(name), 1) << name;
    modules.Close();
}

// ---- Another host at the same time

class AnotherHost {
  public:
    explicit AnotherHost(int version) {
        std::string command(1, '"');
        command.append(Beside("metrify-sheet.exe")).append("\" --serve --release ");
        command.append(std::to_string(version));
        STARTUPINFOA start{};
        start.cb = sizeof(start);
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &process_);
        // Wait until the system lists it as running.
        for (int i = 0; i < 200 && !Active(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ~AnotherHost() {
        EnumWindows(CloseWindowOf, static_cast<LPARAM>(process_.dwProcessId));
        if (WaitForSingleObject(process_.hProcess, 10000) != WAIT_OBJECT_0)
            TerminateProcess(process_.hProcess, 1);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    AnotherHost(const AnotherHost&) = delete;
    AnotherHost& operator=(const AnotherHost&) = delete;

    // The host that the system returns as the active one.
    static ComPtr<IUnknown> Active() {
        CLSID class_id{};
        ComPtr<IUnknown> active;
        if (SUCCEEDED(CLSIDFromProgID(L"Excel.Application", &class_id)))
            GetActiveObject(class_id, nullptr, active.Receive());
        return active;
    }

  private:
    static BOOL CALLBACK CloseWindowOf(HWND window, LPARAM process) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        std::array<char, 50> class_name{};
        GetClassNameA(window, class_name.data(), 50);
        if (owner == static_cast<DWORD>(process) && std::string_view(class_name.data()) == kMainWindowClass)
            PostMessageA(window, WM_CLOSE, 0, 0);
        return TRUE;
    }

    PROCESS_INFORMATION process_{};
};

class two_hosts : public testing::TestWithParam<int> {};

TEST_P(two_hosts, are_distinguished) {
    CoInitialize(nullptr);
    {
        const ProgramNames names;
        const AnotherHost another(GetParam());
        ASSERT_TRUE(AnotherHost::Active());
        IntegrationHost host(GetParam());
        CXllApp application;
        // The other one is the active object; of this host a workbook is in the table.
        RunningObjects listed;
        listed.AddWorkbook(u"C:\\Ours.xls", host.automation.MakeWorkbook(u"Ours.xls").Get());
        ComPtr<IDispatch> active;
        AnotherHost::Active()->QueryInterface(IID_IDispatch, active.ReceiveAny());
        EXPECT_NE(active.Get(), &host.automation.application());
        HostConnection connection;
        EXPECT_TRUE(connection.Init());
        EXPECT_EQ(connection.com.Application(), &host.automation.application());
        EXPECT_EQ(connection.failure.text, u"");
    }
    CoUninitialize();
}

INSTANTIATE_TEST_SUITE_P(versions, two_hosts, testing::Values(7, 16));

} // namespace
} // namespace metrify::host
