// The host's events from its connection point to observers, and the answers.

#include "tests/integration/integration_host.h"
#include "tests/integration/replaced_call.h"

namespace metrify::host {
namespace {

struct ClosingObserver final : CXlEventObserver<CXlBeforeCloseEventArgs> {
    void Notify(CXlBeforeCloseEventArgs& args) override {
        workbook = args.workbook;
        args.cancel = cancels;
    }
    std::string workbook;
    bool cancels = true;
};

struct SelectionObserver final : CXlEventObserver<CXlRangeEventArgs> {
    void Notify(CXlRangeEventArgs& args) override { seen = args; }
    CXlRangeEventArgs seen;
};

struct SavingObserver final : CXlEventObserver<CXlBeforeSaveEventArgs> {
    void Notify(CXlBeforeSaveEventArgs& args) override { seen = args; }
    CXlBeforeSaveEventArgs seen;
};

// An application with its observer function known to the host.
struct Observing {
    explicit Observing(int version) : host(version) {
        AddObserverFunction(application);
        EXPECT_TRUE(RegisterAll(application));
    }
    IntegrationHost host;
    CXlRealIntegration integration;
    CXllApp application{integration};
};

HRESULT WINAPI RefuseAccess(HWND, DWORD, REFIID, void** object) {
    *object = nullptr;
    return E_ACCESSDENIED;
}

class observed_event : public testing::TestWithParam<int> {};

TEST_P(observed_event, is_cancelled_by_an_observer) {
    Observing observing(GetParam());
    ClosingObserver observer;
    observing.application.events.workbookBeforeClose.AddObserver(&observer);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    EXPECT_EQ(observing.host.Fire(1570, {observing.host.Workbook()}, &cancel), S_OK);
    EXPECT_EQ(observer.workbook, "Book1");
    EXPECT_EQ(cancel, VARIANT_TRUE);
}

TEST_P(observed_event, continues_if_no_observer_cancels_it) {
    Observing observing(GetParam());
    ClosingObserver observer;
    observer.cancels = false;
    observing.application.events.workbookBeforeClose.AddObserver(&observer);
    VARIANT_BOOL cancel = VARIANT_TRUE;
    EXPECT_EQ(observing.host.Fire(1570, {observing.host.Workbook()}, &cancel), S_OK);
    EXPECT_EQ(observer.workbook, "Book1");
    EXPECT_EQ(cancel, VARIANT_FALSE);
}

TEST_P(observed_event, describes_sheet_and_range) {
    Observing observing(GetParam());
    SelectionObserver observer;
    observing.application.events.selectionChange.AddObserver(&observer);
    EXPECT_EQ(observing.host.Fire(1558, {observing.host.Sheet(), observing.host.Range()}), S_OK);
    EXPECT_EQ(observer.seen.sheet, "[Book1]Sheet1");
    EXPECT_EQ(observer.seen.range, "$A$1");
}

TEST_P(observed_event, passes_flags) {
    Observing observing(GetParam());
    SavingObserver observer;
    observing.application.events.workbookBeforeSave.AddObserver(&observer);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    EXPECT_EQ(observing.host.Fire(1571, {observing.host.Workbook(), ComVariant(true)}, &cancel), S_OK);
    EXPECT_EQ(observer.seen.workbook, "Book1");
    EXPECT_TRUE(observer.seen.saveAs);
}

INSTANTIATE_TEST_SUITE_P(versions, observed_event, testing::Values(8, 11, 12, 16));

TEST(observed_event, connects_nothing_without_an_observer) {
    Observing observing(16);
    EXPECT_EQ(observing.host.sinks(), 0U);
    EXPECT_EQ(CXllCom::Instance(), nullptr);
}

TEST(observed_event, is_a_COM_exception_if_the_host_cannot_be_found) {
    Observing observing(16);
    const ReplacedPointer refusing(LoadedFunction(&SystemFunctions::accessible_object_from_window),
                                   AddressOf(RefuseAccess));
    ClosingObserver observer;
    try {
        observing.application.events.workbookBeforeClose.AddObserver(&observer);
        FAIL() << "connected";
    } catch (const CXlComException& exception) {
        EXPECT_EQ(exception.Call(), u"AccessibleObjectFromWindow");
        EXPECT_EQ(exception.Code(), 0x80070005U);
        EXPECT_STREQ(exception.what(), "AccessibleObjectFromWindow failed with error code 0x80070005");
    }
    EXPECT_EQ(CXllCom::Instance(), nullptr);
}

TEST(observed_event, is_a_COM_exception_with_a_sentence_unchanged) {
    Observing observing(16);
    HostConnection first;
    ASSERT_TRUE(first.Init());
    ClosingObserver observer;
    try {
        observing.application.events.workbookBeforeClose.AddObserver(&observer);
        FAIL() << "connected";
    } catch (const CXlComException& exception) {
        EXPECT_STREQ(exception.what(), "An instance of CXllCom has already been created");
        EXPECT_EQ(exception.Code(), 0U);
    }
}

// Unloads the add-in.
struct UnloadingObserver final : CXlEventObserver<CXlBeforeCloseEventArgs> {
    explicit UnloadingObserver(CXllApp& observed) : application(observed) {}
    void Notify(CXlBeforeCloseEventArgs& args) override {
        application.OnProcessDetach();
        args.cancel = true;
    }
    CXllApp& application;
};

TEST_P(observed_event, may_unload_the_add_in_and_is_answered) {
    Observing observing(GetParam());
    const int references = observing.host.automation.ledger().references();
    UnloadingObserver observer(observing.application);
    observing.application.events.workbookBeforeClose.AddObserver(&observer);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    EXPECT_EQ(observing.host.Fire(1570, {observing.host.Workbook()}, &cancel), S_OK);
    EXPECT_EQ(cancel, VARIANT_TRUE);
    EXPECT_EQ(observing.host.sinks(), 0U);
    EXPECT_TRUE(observing.host.settings().displayAlerts);
    EXPECT_EQ(CXllCom::Instance(), nullptr);
    EXPECT_EQ(observing.host.automation.ledger().references(), references);
}

TEST(observed_event, is_handled_by_the_macro_set_for_it) {
    Observing observing(16);
    ClosingObserver observer;
    observing.application.events.workbookBeforeClose.AddObserver(&observer);
    observing.application.eventHandlers[11] = "no such macro";
    VARIANT_BOOL cancel = VARIANT_TRUE;
    EXPECT_EQ(observing.host.Fire(1570, {observing.host.Workbook()}, &cancel), S_OK);
    EXPECT_EQ(observer.workbook, "");
    EXPECT_EQ(cancel, VARIANT_FALSE);
}

} // namespace
} // namespace metrify::host
