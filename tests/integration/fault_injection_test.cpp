// Sessions in each of which one call of the host fails. Afterwards nothing is left over: no reference, no
// workbook, and no connection unless the host refused to end it.

#include "tests/integration/fault_injection.h"

namespace metrify::host {
namespace {

struct CancellingObserver final : CXlEventObserver<CXlBeforeCloseEventArgs> {
    void Notify(CXlBeforeCloseEventArgs& args) override { args.cancel = true; }
};

struct Selection final : CXlEventObserver<CXlRangeEventArgs> {
    void Notify(CXlRangeEventArgs& args) override { range = args.range; }
    std::string range;
};

// Finds the host, uses its events, macros and addresses, and disconnects. False if the host refused to
// disconnect its events.
bool UseHost(IntegrationHost& host) {
    HostConnection connection;
    if (!connection.Init() || !connection.com.SetEvents(true, connection.failure))
        return true;
    VARIANT_BOOL cancel = VARIANT_FALSE;
    host.Fire(1570, {host.Workbook()}, &cancel);
    ComVariant answer;
    connection.com.RunMacroByText(u"NoSuchMacro()", answer);
    ComPtr<IDispatch> sheet;
    connection.com.ActiveWorksheet(sheet);
    std::u16string text;
    RangeAddress(
        host.automation.MakeRange(host.automation.MakeWorksheet(u"B", u"S"), {u"$A$1", u"$A$1"}).Get(), text,
        true);
    return connection.com.SetEvents(false, connection.failure);
}

void UseHostWithPoint(IntegrationHost& host) {
    const bool is_disconnected = UseHost(host);
    EXPECT_EQ(host.sinks(), is_disconnected ? 0U : 1U);
}

TEST(fault_injection, in_the_search_by_the_window) {
    IntegrationHost host(16);
    CXllApp application;
    const std::size_t calls = FailEachCall(host, kDisconnectionCalls, [&host] { UseHostWithPoint(host); });
    EXPECT_GT(calls, 20U);
    Report("window", calls);
}

TEST(fault_injection, in_the_search_by_the_window_without_a_workbook) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    // A workbook that the host refuses to close stays open.
    const std::size_t calls = FailEachCall(host, kDisconnectionCalls, [&host] {
        UseHostWithPoint(host);
        while (host.books() > 0)
            host.host.state().books.Close();
    });
    EXPECT_GT(calls, 20U);
    Report("window, no workbook", calls);
}

TEST(fault_injection, in_the_search_by_the_running_objects) {
    const ProgramNames names;
    IntegrationHost host(6);
    CXllApp application;
    host.automation.ShowAsRunning();
    const std::size_t calls = FailEachCall(host, kDisconnectionCalls, [&host] {
        UseHostWithPoint(host);
        while (host.books() > 1)
            host.host.state().books.Close();
    });
    EXPECT_GT(calls, 20U);
    Report("running objects", calls);
}

TEST(fault_injection, with_the_events_of_old_hosts) {
    const ProgramNames names;
    IntegrationHost host(5);
    CXllApp application;
    host.automation.ShowAsRunning();
    const std::array<std::u16string, 3> macros = {u"First", u"Second", u"Third"};
    host.settings().eventMacros = macros;
    int refused = 0;
    const std::size_t calls = FailEachCall(host, 0, [&] {
        const bool is_disconnected = UseHost(host);
        while (host.books() > 1)
            host.host.state().books.Close();
        EXPECT_EQ(host.settings().eventMacros == macros, is_disconnected);
        host.settings().eventMacros = macros;
        refused += is_disconnected ? 0 : 1;
    });
    EXPECT_EQ(refused, 6); // the look-up and the setting of each of the three properties
    EXPECT_GT(calls, 20U);
    Report("old events", calls);
}

TEST(fault_injection, in_a_whole_application_with_observers) {
    IntegrationHost host(16);
    const CXlRealIntegration integration;
    const std::size_t calls = FailEachCall(host, kDisconnectionCalls, [&host, &integration] {
        CXllApp application(integration);
        AddObserverFunction(application);
        RegisterAll(application);
        CancellingObserver closing;
        Selection selection;
        try {
            application.events.workbookBeforeClose.AddObserver(&closing);
            application.events.selectionChange.AddObserver(&selection);
        } catch (const CXlComException&) {
            // The host can't be reached.
        }
        VARIANT_BOOL cancel = VARIANT_FALSE;
        host.Fire(1570, {host.Workbook()}, &cancel);
        host.Fire(1558, {host.Sheet(), host.Range()});
        application.OnProcessDetach();
        UnregisterAll(application);
    });
    EXPECT_GT(calls, 40U);
    Report("application", calls);
}

} // namespace
} // namespace metrify::host
