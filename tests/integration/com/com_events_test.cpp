// The host's events from its connection point to the application.

#include "tests/integration/fixed_system_texts.h"
#include "tests/integration/integration_host.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace metrify::host {
namespace {

// Records the called operations and their arguments.
class RecordingApp : public CXllApp {
  public:
    using CXllApp::CXllApp;

    bool Note(std::string name, std::vector<IDispatch*> objects = {}, std::optional<bool> flag = {}) {
        last = std::move(name);
        given = std::move(objects);
        given_flag = flag;
        return answer;
    }

#define NOTE_OBJECT(name)                                                                                    \
    bool name(XlHostObject* first) override {                                                                \
        return Note(#name, {AsDispatch(first)});                                                             \
    }
#define NOTE_TWO(name)                                                                                       \
    bool name(XlHostObject* first, XlHostObject* second) override {                                          \
        return Note(#name, {AsDispatch(first), AsDispatch(second)});                                         \
    }
    NOTE_OBJECT(OnNewWorkbook)
    NOTE_TWO(OnSelectionChange)
    NOTE_TWO(OnBeforeDoubleClick)
    NOTE_TWO(OnBeforeRightClick)
    NOTE_OBJECT(OnSheetActivate)
    NOTE_OBJECT(OnSheetDeactivate)
    NOTE_OBJECT(OnCalculate)
    NOTE_TWO(OnSheetChange)
    NOTE_OBJECT(OnWorkbookOpen)
    NOTE_OBJECT(OnWorkbookActivate)
    NOTE_OBJECT(OnWorkbookDeactivate)
    NOTE_OBJECT(OnWorkbookBeforeClose)
    NOTE_OBJECT(OnWorkbookEvent13)
    NOTE_TWO(OnWorkbookNewSheet)
    NOTE_OBJECT(OnWorkbookEvent15)
    NOTE_OBJECT(OnWorkbookEvent16)
#undef NOTE_OBJECT
#undef NOTE_TWO
    bool OnWorkbookBeforeSave(XlHostObject* book, bool save_as) override {
        return Note("OnWorkbookBeforeSave", {AsDispatch(book)}, save_as);
    }
    bool OnWorkbookAfterSave(XlHostObject* book, bool success) override {
        return Note("OnWorkbookAfterSave", {AsDispatch(book)}, success);
    }
    bool OnAfterCalculate() override {
        return Note("OnAfterCalculate");
    }
    void OnReservedEvent17() override {
        Note("OnReservedEvent17");
    }
    void OnReservedEvent18() override {
        Note("OnReservedEvent18");
    }
    void OnReservedEvent19() override {
        Note("OnReservedEvent19");
    }

    std::string last;
    std::vector<IDispatch*> given;
    std::optional<bool> given_flag;
    bool answer = false;
};

// A host with an application connected to its events.
struct Connected {
    explicit Connected(int version = 16) : host(version) {
        EXPECT_TRUE(connection.Init());
        EXPECT_TRUE(connection.com.SetEvents(true, connection.failure));
    }
    IntegrationHost host;
    RecordingApp application;
    HostConnection connection;
};

struct EventCase {
    DISPID id;
    std::string arguments; ///< D object, B boolean, R boolean by reference
    std::string operation;
};

void PrintTo(const EventCase& event, std::ostream* out) {
    *out << event.id;
}

class com_event : public testing::TestWithParam<EventCase> {
  protected:
    // Arguments of the right types; the caller adds the one for R.
    static std::vector<ComVariant> Fitting(IntegrationHost& host, const std::string& letters) {
        std::vector<ComVariant> arguments;
        for (const char letter : letters)
            if (letter == 'D')
                arguments.push_back(host.Sheet());
            else if (letter == 'B')
                arguments.emplace_back(true);
        return arguments;
    }

    static HRESULT FireFitting(IntegrationHost& host, VARIANT_BOOL& cancel) {
        const EventCase& event = GetParam();
        return host.Fire(event.id, Fitting(host, event.arguments),
                         event.arguments.ends_with('R') ? &cancel : nullptr);
    }
};

TEST_P(com_event, reaches_its_operation_with_its_arguments) {
    Connected connected;
    const EventCase& event = GetParam();
    const auto arguments = Fitting(connected.host, event.arguments);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    EXPECT_EQ(connected.host.Fire(event.id, arguments, event.arguments.ends_with('R') ? &cancel : nullptr),
              S_OK);
    EXPECT_EQ(connected.application.last, event.operation);
    for (std::size_t i = 0; i < connected.application.given.size(); ++i)
        EXPECT_EQ(connected.application.given[i], arguments[i].Object().Get());
}

class event_with_flag : public com_event {};

TEST_P(event_with_flag, passes_the_flag_unchanged) {
    Connected connected;
    for (const bool flag : {true, false}) {
        std::vector<ComVariant> arguments = {connected.host.Workbook(), ComVariant(flag)};
        VARIANT_BOOL cancel = VARIANT_FALSE;
        EXPECT_EQ(connected.host.Fire(GetParam().id, arguments,
                                      GetParam().arguments.ends_with('R') ? &cancel : nullptr),
                  S_OK);
        EXPECT_EQ(connected.application.given_flag, flag);
    }
}

class cancellable_event : public com_event {};

TEST_P(cancellable_event, stores_true_or_false_where_the_host_asks_whether_to_cancel) {
    Connected connected;
    VARIANT_BOOL cancel = 7;
    EXPECT_EQ(FireFitting(connected.host, cancel), S_OK);
    EXPECT_EQ(cancel, 0);
    connected.application.answer = true;
    EXPECT_EQ(FireFitting(connected.host, cancel), S_OK);
    EXPECT_EQ(cancel, -1);
}

TEST_P(com_event, refuses_another_count_of_arguments) {
    Connected connected;
    auto arguments = Fitting(connected.host, GetParam().arguments);
    arguments.resize(GetParam().arguments.size(), ComVariant(true));
    arguments.emplace_back(true);
    EXPECT_EQ(connected.host.Fire(GetParam().id, arguments), static_cast<HRESULT>(0x8002000E));
    EXPECT_EQ(connected.application.last, "");
}

class event_with_arguments : public com_event {};

TEST_P(event_with_arguments, refuses_arguments_of_another_type) {
    Connected connected;
    for (std::size_t wrong = 0; wrong < GetParam().arguments.size(); ++wrong) {
        auto arguments = Fitting(connected.host, GetParam().arguments);
        VARIANT_BOOL cancel = VARIANT_FALSE;
        const bool has_answer = GetParam().arguments.ends_with('R');
        const bool is_answer_wrong = has_answer && wrong + 1 == GetParam().arguments.size();
        if (is_answer_wrong)
            arguments.emplace_back(true); // a boolean, but not by reference
        else
            arguments[wrong] = ComVariant(u"text");
        EXPECT_EQ(
            connected.host.Fire(GetParam().id, arguments, has_answer && !is_answer_wrong ? &cancel : nullptr),
            static_cast<HRESULT>(0x80020005));
    }
    EXPECT_EQ(connected.application.last, "");
}

const EventCase kEventCases[] = {
    {1554, "DD", "OnReservedEvent17"},
    {1556, "DD", "OnReservedEvent18"},
    {1557, "DD", "OnReservedEvent19"},
    {1558, "DD", "OnSelectionChange"},
    {1559, "DDR", "OnBeforeDoubleClick"},
    {1560, "DDR", "OnBeforeRightClick"},
    {1561, "D", "OnSheetActivate"},
    {1562, "D", "OnSheetDeactivate"},
    {1563, "D", "OnCalculate"},
    {1564, "DD", "OnSheetChange"},
    {1565, "D", "OnNewWorkbook"},
    {1567, "D", "OnWorkbookOpen"},
    {1568, "D", "OnWorkbookActivate"},
    {1569, "D", "OnWorkbookDeactivate"},
    {1570, "DR", "OnWorkbookBeforeClose"},
    {1571, "DBR", "OnWorkbookBeforeSave"},
    {1572, "DR", "OnWorkbookEvent13"},
    {1573, "DD", "OnWorkbookNewSheet"},
    {1574, "D", "OnWorkbookEvent15"},
    {1575, "D", "OnWorkbookEvent16"},
    {2612, "", "OnAfterCalculate"},
    {2911, "DB", "OnWorkbookAfterSave"},
};
std::vector<EventCase> CasesWith(const std::function<bool(const EventCase&)>& property) {
    std::vector<EventCase> found;
    std::copy_if(std::begin(kEventCases), std::end(kEventCases), std::back_inserter(found), property);
    return found;
}

INSTANTIATE_TEST_SUITE_P(all, com_event, testing::ValuesIn(kEventCases));
INSTANTIATE_TEST_SUITE_P(all, event_with_flag, testing::ValuesIn(CasesWith([](const EventCase& event) {
                             return event.arguments.find('B') != std::string::npos;
                         })));
INSTANTIATE_TEST_SUITE_P(all, cancellable_event, testing::ValuesIn(CasesWith([](const EventCase& event) {
                             return event.arguments.ends_with('R');
                         })));
INSTANTIATE_TEST_SUITE_P(all, event_with_arguments, testing::ValuesIn(CasesWith([](const EventCase& event) {
                             return !event.arguments.empty();
                         })));

TEST(com_events, that_are_unknown_are_refused) {
    Connected connected;
    for (const DISPID id : {1555, 1566, 1, 3000})
        EXPECT_EQ(connected.host.Fire(id, {connected.host.Sheet()}), static_cast<HRESULT>(0x80020003)) << id;
}

TEST(com_events, without_parameters_are_refused) {
    const auto sink = CDispatchSink::Create(nullptr);
    EXPECT_EQ(sink->Invoke(1561, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              static_cast<HRESULT>(0x80020004));
    EXPECT_EQ(sink->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              static_cast<HRESULT>(0x80020004));
}

TEST(com_events, find_three_interfaces_of_the_sink) {
    const auto sink = CDispatchSink::Create(nullptr);
    for (const IID& iid : {IID_IUnknown, IID_IDispatch, kHostApplicationEvents}) {
        ComPtr<IUnknown> found;
        EXPECT_EQ(sink->QueryInterface(iid, found.ReceiveAny()), S_OK);
        EXPECT_EQ(found.Get(), sink.Get());
    }
    void* none = sink.Get();
    EXPECT_EQ(sink->QueryInterface(IID_IMoniker, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(sink->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(com_events, find_neither_types_nor_names_in_the_sink) {
    const auto sink = CDispatchSink::Create(nullptr);
    UINT count = 7;
    EXPECT_EQ(sink->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(sink->GetTypeInfo(0, 0, nullptr), E_NOTIMPL);
    EXPECT_EQ(sink->GetIDsOfNames(IID_NULL, nullptr, 0, 0, nullptr), E_NOTIMPL);
}

class ThrowingApp final : public CXllApp {
    bool OnSheetActivate(XlHostObject* /*sheet*/) override { throw std::runtime_error("not now"); }
    bool OnWorkbookBeforeClose(XlHostObject* /*book*/) override {
        throw CXlRuntimeException(std::string("not now"));
    }
};

TEST(com_events, stop_at_an_observer_that_throws) {
    IntegrationHost host(16);
    ThrowingApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(host.Fire(1561, {host.Sheet()}), S_OK);
    VARIANT_BOOL cancel = VARIANT_TRUE;
    EXPECT_EQ(host.Fire(1570, {host.Workbook()}, &cancel), S_OK);
    EXPECT_EQ(cancel, VARIANT_FALSE);
}

TEST(com_events, have_no_effect_on_a_disconnected_sink) {
    Connected connected;
    const ComVariant sheet = connected.host.Sheet();
    DISPPARAMS parameters{const_cast<VARIANT*>(&sheet.Get()), nullptr, 1, 0};
    const auto sink = CDispatchSink::Create(&connected.application);
    sink->SetApplication(nullptr);
    EXPECT_EQ(sink->Invoke(1561, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(connected.application.last, "");
}

TEST(com_events, are_connected_once) {
    Connected connected;
    EXPECT_TRUE(connected.connection.com.AreEventsConnected());
    EXPECT_TRUE(connected.connection.com.SetEvents(true, connected.connection.failure));
    EXPECT_EQ(connected.host.sinks(), 1U);
}

TEST(com_events, clear_an_earlier_failure_also_if_nothing_is_to_do) {
    Connected connected;
    connected.connection.failure = {u"earlier", E_FAIL};
    EXPECT_TRUE(connected.connection.com.SetEvents(true, connected.connection.failure));
    EXPECT_EQ(connected.connection.failure.text, u"");
    EXPECT_EQ(connected.connection.failure.code, S_OK);
}

TEST(com_events, are_disconnected_and_connected_again) {
    Connected connected;
    EXPECT_TRUE(connected.connection.com.SetEvents(false, connected.connection.failure));
    EXPECT_EQ(connected.host.sinks(), 0U);
    EXPECT_TRUE(connected.connection.com.SetEvents(false, connected.connection.failure));
    EXPECT_FALSE(connected.connection.com.AreEventsConnected());
    EXPECT_TRUE(connected.connection.com.SetEvents(true, connected.connection.failure));
    EXPECT_EQ(connected.host.sinks(), 1U);
}

TEST(com_events, end_with_the_connection_to_the_host) {
    IntegrationHost host(16);
    RecordingApp application;
    {
        HostConnection connection;
        ASSERT_TRUE(connection.Init());
        ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
        EXPECT_EQ(host.sinks(), 1U);
    }
    EXPECT_EQ(host.sinks(), 0U);
}

TEST(com_events, are_not_available_from_an_object_that_is_not_an_application) {
    IntegrationHost host(16);
    RecordingApp application;
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(
        MakeObject<WindowObject>(host.automation.context(), ComVariant(host.Range())).Get()));
    HostConnection connection;
    ASSERT_TRUE(connection.Init()); // a range is accepted as an application, but has no events
    const FixedSystemTexts texts;
    EXPECT_FALSE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(connection.failure.text, u"AtlAdvise: text of 80004002");
    EXPECT_EQ(connection.failure.code, E_NOINTERFACE);
    EXPECT_FALSE(connection.com.AreEventsConnected());
}

TEST(com_events, are_not_available_without_an_application) {
    IntegrationHost host(16);
    RecordingApp application;
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(
        MakeObject<WindowObject>(host.automation.context(), ComVariant(u"no object")).Get()));
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    const FixedSystemTexts texts;
    EXPECT_FALSE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(connection.failure.text, u"AtlAdvise: text of 80004003");
    EXPECT_EQ(connection.failure.code, E_POINTER);
}

} // namespace
} // namespace metrify::host
