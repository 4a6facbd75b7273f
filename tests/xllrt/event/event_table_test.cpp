// The numbers of the events of the host, and the static observers of all events.

#include "recording_integration.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/app/host_event_table.h"
#include "xllrt/app/observer_function.h"

#include <functional>
#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Event>
using ObserverOf = CXlEventObserver<typename Event::Args>;

template <class Event>
class CountingObserver final : public ObserverOf<Event> {
  public:
    void Notify(typename Event::Args& /*args*/) override { ++count; }
    int count = 0;
};

/// Calls the action with each event of the host and its number.
template <class Action>
void ForEachHostEvent(CXlAppEvents& events, Action action) {
    action(events.newWorkbook, 0);
    action(events.selectionChange, 1);
    action(events.beforeDoubleClick, 2);
    action(events.beforeRightClick, 3);
    action(events.sheetActivate, 4);
    action(events.sheetDeactivate, 5);
    action(events.calculate, 6);
    action(events.sheetChange, 7);
    action(events.workbookOpen, 8);
    action(events.workbookActivate, 9);
    action(events.workbookDeactivate, 10);
    action(events.workbookBeforeClose, 11);
    action(events.workbookBeforeSave, 12);
    action(events.workbookNewSheet, 14);
    action(events.afterCalculate, 20);
    action(events.workbookAfterSave, 21);
}

class EventTable : public AddInTest {
  protected:
    std::vector<int> SwitchedOn() const {
        std::vector<int> numbers;
        for (std::size_t number = 0; number < app.eventSwitches.size(); ++number)
            if (app.eventSwitches[number])
                numbers.push_back(static_cast<int>(number));
        return numbers;
    }

    RecordingIntegration integration;
    RecordingApp app{host, integration};
};

// ---- Numbers

TEST_F(EventTable, there_are_22_numbers) {
    EXPECT_EQ(app.eventSwitches.size(), 22u);
    EXPECT_EQ(app.eventHandlers.size(), 22u);
}

TEST_F(EventTable, the_first_observer_of_an_event_switches_on_its_number_and_the_last_switches_it_off) {
    ForEachHostEvent(
        app.events,
        [&](auto& event, int number) {
            CountingObserver<std::remove_reference_t<decltype(event)>> observer;
            event.AddObserver(&observer);
            EXPECT_THAT(SwitchedOn(), ElementsAre(number));
            event.RemoveObserver(&observer);
            EXPECT_THAT(SwitchedOn(), IsEmpty());
        });
}

TEST_F(EventTable, the_number_of_an_event_is_dispatched_to_its_observers_and_no_other_number_is) {
    ForEachHostEvent(
        app.events,
        [&](auto& event, int own_number) {
            CountingObserver<std::remove_reference_t<decltype(event)>> observer;
            event.AddObserver(&observer);
            for (int number = -1; number <= 30; ++number) {
                observer.count = 0;
                CXlOper result(false);
                DispatchEvent(app, result, number, CXlOper(), CXlOper());
                EXPECT_EQ(observer.count, number == own_number ? 1 : 0) << own_number << " " << number;
            }
            event.RemoveObserver(&observer);
        });
}

TEST_F(EventTable, events_of_the_application_switch_nothing_on) {
    CountingObserver<CXllOpenEvent> opening;
    CountingObserver<CXllCloseEvent> closing;
    app.events.open.AddObserver(&opening);
    app.events.close.AddObserver(&closing);
    app.events.registerFunctions.AddObserver(&closing);
    EXPECT_THAT(SwitchedOn(), IsEmpty());
    EXPECT_THAT(integration.script.calls, IsEmpty());
}

TEST_F(EventTable, switching_one_event_off_leaves_the_others_on) {
    for (int off = 0; off < 22; ++off) {
        app.eventSwitches.fill(true);
        app.EnableEvent(off, false);
        for (int number = 0; number < 22; ++number) {
            EXPECT_EQ(app.eventSwitches[static_cast<std::size_t>(number)], number != off)
                << off << " " << number;
        }
    }
}

TEST_F(EventTable, switching_one_event_on_leaves_the_others_off) {
    for (int on = 0; on < 22; ++on) {
        app.eventSwitches.fill(false);
        app.EnableEvent(on, true);
        EXPECT_THAT(SwitchedOn(), ElementsAre(on));
    }
}

/// The virtual operations that raise the events, with the numbers that they raise.
struct Raising {
    int number;
    bool is_cancellable;
    std::function<bool(CXllApp&, XlHostObject*)> raise;
};
const std::vector<Raising>& Raisings() {
    using App = CXllApp&;
    using Object = XlHostObject*;
    static const std::vector<Raising> rows = {
        {0, false, [](App app, Object object) { return app.OnNewWorkbook(object); }},
        {1, false, [](App app, Object object) { return app.OnSelectionChange(object, object); }},
        {2, true, [](App app, Object object) { return app.OnBeforeDoubleClick(object, object); }},
        {3, true, [](App app, Object object) { return app.OnBeforeRightClick(object, object); }},
        {4, false, [](App app, Object object) { return app.OnSheetActivate(object); }},
        {5, false, [](App app, Object object) { return app.OnSheetDeactivate(object); }},
        {6, false, [](App app, Object object) { return app.OnCalculate(object); }},
        {7, false, [](App app, Object object) { return app.OnSheetChange(object, object); }},
        {8, false, [](App app, Object object) { return app.OnWorkbookOpen(object); }},
        {9, false, [](App app, Object object) { return app.OnWorkbookActivate(object); }},
        {10, false, [](App app, Object object) { return app.OnWorkbookDeactivate(object); }},
        {11, true, [](App app, Object object) { return app.OnWorkbookBeforeClose(object); }},
        {12, true, [](App app, Object object) { return app.OnWorkbookBeforeSave(object, true); }},
        {13, true, [](App app, Object object) { return app.OnWorkbookEvent13(object); }},
        {14, false, [](App app, Object object) { return app.OnWorkbookNewSheet(object, object); }},
        {15, false, [](App app, Object object) { return app.OnWorkbookEvent15(object); }},
        {16, false, [](App app, Object object) { return app.OnWorkbookEvent16(object); }},
        {20, false, [](App app, Object /*object*/) { return app.OnAfterCalculate(); }},
        {21, false, [](App app, Object object) { return app.OnWorkbookAfterSave(object, true); }},
    };
    return rows;
}

class RaisedEvents : public EventTable {
  protected:
    RaisedEvents() {
        integration.script.run = [](std::span<const XlComValue>, CXlOper& answer) {
            answer.SetBool(1);
            return true;
        };
        app.observerFunctionName = u"observer";
        app.eventSwitches.fill(true);
    }

    // The observer function, which cancels whatever it can, is asked once, with the number of the event.
    template <class Raise>
    void ExpectRaised(const Raising& event, Raise raise) {
        integration.script.ran.clear();
        EXPECT_EQ(raise(), event.is_cancellable) << event.number;
        ASSERT_EQ(integration.script.ran.size(), 1u) << event.number;
        EXPECT_EQ(std::get<std::int32_t>(integration.script.ran[0].at(1)), event.number);
    }

    XlHostObject object{u"Book1!Sheet1"};
};

TEST_F(RaisedEvents, of_each_operation_have_its_number) {
    for (const Raising& event : Raisings())
        ExpectRaised(
            event, [&] { return event.raise(app, &object); });
}

TEST_F(RaisedEvents, of_the_row_of_a_number_have_this_number) {
    for (const Raising& event : Raisings()) {
        const XlHostEventRow* const row = FindHostEvent(event.number);
        ASSERT_TRUE(row) << event.number;
        std::vector<XlEventArgument> arguments;
        for (const char letter : row->signature)
            arguments.push_back(letter == 'F' ? XlEventArgument(true) : XlEventArgument(&object));
        ExpectRaised(event, [&] { return row->call(app, arguments); });
    }
}

class AppWithReservedEvents final : public RecordingApp {
  public:
    using RecordingApp::RecordingApp;
    void OnReservedEvent17() override { called.push_back(17); }
    void OnReservedEvent18() override { called.push_back(18); }
    void OnReservedEvent19() override { called.push_back(19); }
    std::vector<int> called;
};

TEST_F(EventTable, the_rows_of_events_17_to_19_call_their_operations_and_cancel_nothing) {
    AppWithReservedEvents reserved(host, integration);
    const std::vector<XlEventArgument> objects(2);
    for (const int number : {17, 18, 19})
        EXPECT_FALSE(FindHostEvent(number)->call(reserved, objects)) << number;
    EXPECT_THAT(reserved.called, ElementsAre(17, 18, 19));
}

TEST_F(EventTable, each_operation_asks_its_own_switch_and_its_own_handler) {
    app.observerFunctionName = u"observer";
    XlHostObject object{u"Book1!Sheet1"};
    for (const Raising& row : Raisings()) {
        const auto index = static_cast<std::size_t>(row.number);
        integration.script.ran.clear();
        app.eventSwitches.fill(true);
        app.eventSwitches[index] = false;
        EXPECT_FALSE(row.raise(app, &object));
        EXPECT_THAT(integration.script.ran, IsEmpty()) << row.number;
        app.eventHandlers[index] = "Macro";
        row.raise(app, &object);
        ASSERT_EQ(integration.script.ran.size(), 1u) << row.number;
        EXPECT_EQ(std::get<std::u16string>(integration.script.ran[0].at(0)), u"Macro");
        app.eventHandlers[index].clear();
    }
}

// ---- The chains

/// A static observer that is in the chain of its event during its lifetime.
template <class Event>
class ChainedObserver final : public CXlEventStaticObserver<Event> {
  public:
    explicit ChainedObserver(int& count) : count_(count) {}
    void Notify(typename Event::Args& /*args*/) override { ++count_; }

  private:
    int& count_;
};

/// One static observer for each event.
class AllChains {
  public:
    template <class Event>
    int Notified(Event& event) {
        count_ = 0;
        typename Event::Args args{};
        event.Notify(args);
        return count_;
    }

  private:
    int count_ = 0;
    ChainedObserver<CXllOpenEvent> open_{count_};
    ChainedObserver<CXllCloseEvent> close_{count_};
    ChainedObserver<CXlRegisterFunctionsEvent> registering_{count_};
    ChainedObserver<CXlNewWorkbookEvent> event0_{count_};
    ChainedObserver<CXlSelectionChangeEvent> event1_{count_};
    ChainedObserver<CXlBeforeDoubleClickEvent> event2_{count_};
    ChainedObserver<CXlBeforeRightClickEvent> event3_{count_};
    ChainedObserver<CXlSheetActivateEvent> event4_{count_};
    ChainedObserver<CXlSheetDeactivateEvent> event5_{count_};
    ChainedObserver<CXlCalculateEvent> event6_{count_};
    ChainedObserver<CXlSheetChangeEvent> event7_{count_};
    ChainedObserver<CXlWorkbookOpenEvent> event8_{count_};
    ChainedObserver<CXlWorkbookActivateEvent> event9_{count_};
    ChainedObserver<CXlWorkbookDeactivateEvent> event10_{count_};
    ChainedObserver<CXlWorkbookBeforeCloseEvent> event11_{count_};
    ChainedObserver<CXlWorkbookBeforeSaveEvent> event12_{count_};
    ChainedObserver<CXlWorkbookNewSheetEvent> event14_{count_};
    ChainedObserver<CXlAfterCalculateEvent> event20_{count_};
    ChainedObserver<CXlWorkbookAfterSaveEvent> event21_{count_};
};

TEST_F(EventTable, opening_and_registering_are_attached_at_process_attach_and_no_other) {
    AllChains chains;
    app.OnProcessAttach();
    EXPECT_EQ(chains.Notified(app.events.open), 1);
    EXPECT_EQ(chains.Notified(app.events.registerFunctions), 1);
    EXPECT_EQ(chains.Notified(app.events.close), 0);
    ForEachHostEvent(app.events,
                     [&](auto& event, int number) { EXPECT_EQ(chains.Notified(event), 0) << number; });
    app.OnProcessDetach();
}

TEST_F(EventTable, the_other_17_are_attached_at_the_end_of_a_load) {
    AllChains chains;
    app.OnProcessAttach();
    bool is_late = false;
    // The functions are registered at that point, and the automation has not been used before.
    host.On(xlfRegister, [&](const std::vector<std::string>&) {
        is_late = chains.Notified(app.events.close) != 0 || !SwitchedOn().empty();
        return Reply{0, 1.0};
    });
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_FALSE(is_late);
    EXPECT_EQ(chains.Notified(app.events.open), 1);
    EXPECT_EQ(chains.Notified(app.events.registerFunctions), 1);
    EXPECT_EQ(chains.Notified(app.events.close), 1);
    ForEachHostEvent(app.events,
                     [&](auto& event, int number) { EXPECT_EQ(chains.Notified(event), 1) << number; });
    EXPECT_THAT(SwitchedOn(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 20, 21));
    app.OnProcessDetach();
}

TEST_F(EventTable, a_load_that_is_cancelled_attaches_none_of_the_17) {
    class Cancelling final : public CXlEventStaticObserver<CXllOpenEvent> {
      public:
        void Notify(CXllOpenEventArgs& args) override { args.cancel = true; }
    };
    AllChains chains;
    const Cancelling cancelling;
    app.OnProcessAttach();
    OpenAddIn();
    EXPECT_EQ(chains.Notified(app.events.close), 0);
    EXPECT_THAT(SwitchedOn(), IsEmpty());
    app.OnProcessDetach();
}

TEST_F(EventTable, they_are_attached_in_the_order_of_the_table_closing_first) {
    AllChains chains;
    std::vector<std::vector<int>> before_connect;
    std::vector<int> closing_notified;
    integration.script.connecting = [&] {
        before_connect.push_back(SwitchedOn());
        closing_notified.push_back(chains.Notified(app.events.close));
    };
    app.events.AttachRest();
    const std::vector<int> order{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 20, 21};
    ASSERT_EQ(before_connect.size(), order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(before_connect[i],
                  std::vector<int>(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(i)));
    }
    EXPECT_EQ(closing_notified.front(), 1) << "attached before the first event of the host";
    app.events.DetachAll();
}

TEST_F(EventTable, process_detach_detaches_all_19) {
    AllChains chains;
    app.OnProcessAttach();
    app.events.AttachRest();
    app.OnProcessDetach();
    EXPECT_EQ(chains.Notified(app.events.open), 0);
    EXPECT_EQ(chains.Notified(app.events.registerFunctions), 0);
    EXPECT_EQ(chains.Notified(app.events.close), 0);
    ForEachHostEvent(app.events,
                     [&](auto& event, int number) { EXPECT_EQ(chains.Notified(event), 0) << number; });
    EXPECT_THAT(SwitchedOn(), IsEmpty());
}

// ---- Identifiers of the host

TEST_F(EventTable, each_identifier_of_the_host_is_that_of_its_event) {
    constexpr int identifiers[] = {1565, 1558, 1559, 1560, 1561, 1562, 1563, 1564, 1567, 1568, 1569,
                                   1570, 1571, 1572, 1573, 1574, 1575, 1554, 1556, 1557, 2612, 2911};
    for (int number = 0; number < 22; ++number) {
        const XlHostEventRow* const row = FindHostEventByDispatchId(identifiers[number]);
        ASSERT_NE(row, nullptr) << identifiers[number];
        EXPECT_EQ(row->number, number);
    }
    for (const int unknown : {0, 1553, 1555, 1566, 1576, 2611, 2912})
        EXPECT_EQ(FindHostEventByDispatchId(unknown), nullptr) << unknown;
}

// ---- The name of the observer function

TEST_F(EventTable, the_observer_function_is_named_after_the_file_up_to_its_last_dot) {
    const auto name_for = [&](const std::u16string& path) {
        host.path = path;
        RecordingApp fresh{host};
        AddObserverFunction(fresh);
        return fresh.observerFunctionName;
    };
    EXPECT_EQ(name_for(u"C:\\Addins\\my.add.in.xll"), u"xll_my_add_in_observer");
    EXPECT_EQ(name_for(u"C:\\Addins.v2\\plain"), u"xll_plain_observer");
    EXPECT_EQ(name_for(u"C:\\Addins.v2/two.parts.xll"), u"xll_two_parts_observer");
    EXPECT_EQ(name_for(u"alone..xll"), u"xll_alone__observer");
    EXPECT_EQ(name_for(u"C:\\Addins\\.xll"), u"xll__observer");
    EXPECT_EQ(name_for(u"C:\\09\\az AZ_09-\u00E4.xll"), u"xll_az_AZ_09___observer");
}

} // namespace
} // namespace metrify
