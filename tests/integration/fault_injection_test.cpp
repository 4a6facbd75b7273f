// Every call of the host's fails once. Nothing may stay behind: no reference, no connection, no workbook.

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

// The road to the host, events, macros and addresses, and back.
void UseHost(IntegrationHost& host) {
    Road road;
    if (!road.Init() || !road.com.SetEvents(true, road.failure))
        return;
    VARIANT_BOOL cancel = VARIANT_FALSE;
    host.Fire(1570, {host.Workbook()}, &cancel);
    ComVariant answer;
    road.com.RunMacroByText(u"NoSuchMacro()", answer);
    ComPtr<IDispatch> sheet;
    road.com.ActiveWorksheet(sheet);
    std::u16string text;
    RangeAddress(
        host.automation.MakeRange(host.automation.MakeWorksheet(u"B", u"S"), {u"$A$1", u"$A$1"}).Get(), text,
        true);
    road.com.SetEvents(false, road.failure);
}

TEST(fault_injection, on_the_road_by_the_window) {
    IntegrationHost host(16);
    CXllApp application;
    const std::size_t calls = FailEachCall(host, [&host] { UseHost(host); });
    EXPECT_GT(calls, 20U);
    Report("window", calls);
}

TEST(fault_injection, on_the_road_by_the_window_without_a_workbook) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    // A workbook whose closing is refused stays: the host has the last word there.
    const std::size_t calls = FailEachCall(host, [&host] {
        UseHost(host);
        while (host.books() > 0)
            host.host.state().books.Close();
    });
    EXPECT_GT(calls, 20U);
    Report("window, no workbook", calls);
}

TEST(fault_injection, on_the_road_by_the_running_objects) {
    const ProgramNames names;
    IntegrationHost host(6);
    CXllApp application;
    host.automation.ShowAsRunning();
    const std::size_t calls = FailEachCall(host, [&host] {
        UseHost(host);
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
    host.settings().eventMacros = {u"First", u"Second", u"Third"};
    const std::size_t calls = FailEachCall(host, [&host] {
        UseHost(host);
        while (host.books() > 1)
            host.host.state().books.Close();
        EXPECT_EQ(host.settings().eventMacros,
                  (std::array<std::u16string, 3>{u"First", u"Second", u"Third"}));
    });
    EXPECT_GT(calls, 20U);
    Report("old events", calls);
}

TEST(fault_injection, in_a_whole_application_with_observers) {
    IntegrationHost host(16);
    const CXlRealIntegration integration;
    const std::size_t calls = FailEachCall(host, [&host, &integration] {
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
