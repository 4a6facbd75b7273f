#include "add_in_fixture.h"
#include "xllrt/app_events.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> told;

class Listener final : public CXlEventObserver<CXlWorkbookEventArgs> {
  public:
    explicit Listener(std::string name) : name_(std::move(name)) {}
    void Notify(CXlWorkbookEventArgs& args) override { told.push_back(name_ + " " + args.workbook); }

  private:
    std::string name_;
};

class StaticListener final : public CXlStaticEventObserver<CXlWorkbookEventArgs> {
  public:
    StaticListener(CXlStaticEventObserver*& chain, std::string name)
        : CXlStaticEventObserver(chain), name_(std::move(name)) {}
    void Notify(CXlWorkbookEventArgs& args) override { told.push_back(name_ + " " + args.workbook); }

  private:
    std::string name_;
};

// An event that tells when it is switched.
class SwitchedEvent final : public CXlEvent<CXlWorkbookEventArgs> {
  public:
    void OnFirstObserver() override { told.emplace_back("on"); }
    void OnNoObservers() override { told.emplace_back("off"); }
};

class EventTest : public testing::Test {
  protected:
    EventTest() { told.clear(); }

    void Raise() {
        CXlWorkbookEventArgs args{"book"};
        event.Notify(args);
    }

    SwitchedEvent event;
    Listener one{"one"};
    Listener two{"two"};
};

TEST_F(EventTest, observers_are_told_in_the_order_of_their_adding) {
    event.AddObserver(&one);
    event.AddObserver(&two);
    Raise();
    EXPECT_THAT(told, ElementsAre("on", "one book", "two book"));
}

TEST_F(EventTest, a_second_observer_does_not_switch_the_event_on_again) {
    event.AddObserver(&one);
    event.AddObserver(&two);
    EXPECT_THAT(told, ElementsAre("on"));
}

TEST_F(EventTest, removing_the_first_of_two_does_not_switch_it_off) {
    event.AddObserver(&one);
    event.AddObserver(&two);
    event.RemoveObserver(&one);
    EXPECT_THAT(told, ElementsAre("on"));
    event.RemoveObserver(&two);
    EXPECT_THAT(told, ElementsAre("on", "off"));
}

TEST_F(EventTest, removing_an_observer_that_is_not_there_changes_and_calls_nothing) {
    event.RemoveObserver(&one);
    EXPECT_THAT(told, IsEmpty());
    event.AddObserver(&one);
    event.RemoveObserver(&two);
    EXPECT_THAT(told, ElementsAre("on"));
}

TEST_F(EventTest, an_observer_added_twice_is_removed_once) {
    event.AddObserver(&one);
    event.AddObserver(&one);
    event.RemoveObserver(&one);
    Raise();
    EXPECT_THAT(told, ElementsAre("on", "one book"));
}

TEST_F(EventTest, static_observers_are_told_in_reverse_order_of_their_construction) {
    CXlStaticEventObserver<CXlWorkbookEventArgs>* chain = nullptr;
    const StaticListener first(chain, "first");
    const StaticListener second(chain, "second");
    event.AttachChain(chain);
    Raise();
    EXPECT_THAT(told, ElementsAre("on", "second book", "first book"));
    event.DetachChain(chain);
    EXPECT_EQ(told.back(), "off");
}

TEST_F(EventTest, a_static_observer_leaves_its_chain_wherever_it_stands) {
    CXlStaticEventObserver<CXlWorkbookEventArgs>* chain = nullptr;
    const StaticListener last(chain, "last");
    {
        const StaticListener middle(chain, "middle");
        const StaticListener head(chain, "head");
    }
    EXPECT_EQ(chain, &last);
    {
        auto middle = std::make_unique<StaticListener>(chain, "middle");
        const StaticListener head(chain, "head");
        middle.reset();
        event.AttachChain(chain);
        Raise();
        EXPECT_THAT(told, ElementsAre("on", "head book", "last book"));
    }
    EXPECT_EQ(chain, &last);
    EXPECT_EQ(last.Next(), nullptr);
}

TEST_F(EventTest, an_exception_of_an_observer_ends_the_walk) {
    class Throwing final : public CXlEventObserver<CXlWorkbookEventArgs> {
      public:
        void Notify(CXlWorkbookEventArgs& /*args*/) override { throw CXlRuntimeException(30U); }
    };
    Throwing throwing;
    event.AddObserver(&throwing);
    event.AddObserver(&one);
    EXPECT_THROW(Raise(), CXlRuntimeException);
    EXPECT_THAT(told, ElementsAre("on"));
}

// ---- Events of the host, by way of the application

class NotingHolder final : public IXlComHolder {
  public:
    explicit NotingHolder(bool fails) : fails_(fails) {}
    ~NotingHolder() override { told.emplace_back("holder gone"); }
    void Connect() override {
        told.emplace_back("connect");
        if (fails_)
            throw CXlComException(u"Connect", 0x80004005U);
    }

  private:
    bool fails_;
};

class NotingComHelper final : public IXlComHelper {
  public:
    void HoldRegistry(IXlWizardRegistry& /*registry*/) override {}
    bool HoldsRegistry() const override { return false; }
    void ReleaseRegistry() override {}
    bool Run(const XlEventCall& call, CXlOper& answer) override {
        std::string line = "run ";
        for (const XCHAR unit : call.target)
            line += static_cast<char>(unit);
        if (call.number)
            line += " " + std::to_string(*call.number);
        told.push_back(line + " " + std::string(call.signature) + " " +
                       std::to_string(call.arguments.size()));
        answer.SetBool(1);
        return succeeds;
    }
    static inline bool succeeds = true;
};

class NotingIntegration final : public CXlIntegration {
  public:
    std::unique_ptr<IXlComHolder> MakeComHolder() const override {
        told.emplace_back("make holder");
        return std::make_unique<NotingHolder>(fails);
    }
    std::unique_ptr<IXlComHelper> MakeComHelper() const override {
        return std::make_unique<NotingComHelper>();
    }
    bool fails = false;
};

class HostEventTest : public AddInTest {
  protected:
    HostEventTest() {
        told.clear();
        NotingComHelper::succeeds = true;
    }

    NotingIntegration integration;
    NotingApp app{host, integration};
    Listener one{"one"};
};

TEST_F(HostEventTest, without_observers_of_host_events_no_connection_is_made) {
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HostEventTest, the_first_observer_connects_and_switches_the_event_on) {
    app.events.workbookOpen.AddObserver(&one);
    EXPECT_THAT(told, ElementsAre("make holder", "connect"));
    EXPECT_TRUE(app.eventSwitches[8]);
    EXPECT_FALSE(app.eventSwitches[9]);
}

TEST_F(HostEventTest, the_last_observer_switches_it_off_and_the_connection_stays) {
    app.events.workbookOpen.AddObserver(&one);
    app.events.workbookOpen.RemoveObserver(&one);
    EXPECT_FALSE(app.eventSwitches[8]);
    app.events.newWorkbook.AddObserver(&one);
    EXPECT_THAT(told, ElementsAre("make holder", "connect", "connect")) << "one connection for all events";
    app.OnProcessDetach();
    EXPECT_EQ(told.back(), "holder gone");
}

TEST_F(HostEventTest, a_connection_that_fails_fails_the_load) {
    integration.fails = true;
    const StaticListener listener(CXlWorkbookOpenEvent::Chain(), "listener");
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_THAT(
        host.TakeCalls().back(),
        testing::HasSubstr("xlcAlert(\"Unexpected error during initialization:\nConnect failed with"));
    EXPECT_FALSE(app.eventSwitches[8]);
}

TEST_F(HostEventTest, an_event_that_is_switched_off_and_has_no_handler_is_answered_with_false) {
    app.observerFunctionName = u"observer";
    NotingComHelper::succeeds = true;
    EXPECT_FALSE(app.OnSheetActivate(nullptr));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostEventTest, a_switched_event_goes_to_the_observer_function_with_its_number) {
    app.observerFunctionName = u"observer";
    app.eventSwitches.fill(true);
    app.OnSelectionChange(nullptr, nullptr);
    EXPECT_THAT(told, ElementsAre("run observer 1 SR 2"));
}

TEST_F(HostEventTest, without_observer_function_a_switched_event_goes_nowhere) {
    app.eventSwitches.fill(true);
    EXPECT_FALSE(app.OnSelectionChange(nullptr, nullptr));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HostEventTest, event_13_reaches_the_macro_set_for_it_although_it_has_no_event_object) {
    app.eventHandlers[13] = "Handler";
    EXPECT_TRUE(app.OnWorkbookEvent13(nullptr));
    EXPECT_THAT(told, ElementsAre("run Handler B 1"));
}

TEST_F(HostEventTest, only_events_that_can_be_cancelled_have_an_answer) {
    app.eventHandlers.fill("H");
    EXPECT_FALSE(app.OnNewWorkbook(nullptr));
    EXPECT_FALSE(app.OnSelectionChange(nullptr, nullptr));
    EXPECT_TRUE(app.OnBeforeDoubleClick(nullptr, nullptr));
    EXPECT_TRUE(app.OnBeforeRightClick(nullptr, nullptr));
    EXPECT_FALSE(app.OnSheetActivate(nullptr));
    EXPECT_FALSE(app.OnSheetDeactivate(nullptr));
    EXPECT_FALSE(app.OnCalculate(nullptr));
    EXPECT_FALSE(app.OnSheetChange(nullptr, nullptr));
    EXPECT_FALSE(app.OnWorkbookOpen(nullptr));
    EXPECT_FALSE(app.OnWorkbookActivate(nullptr));
    EXPECT_FALSE(app.OnWorkbookDeactivate(nullptr));
    EXPECT_TRUE(app.OnWorkbookBeforeClose(nullptr));
    EXPECT_TRUE(app.OnWorkbookBeforeSave(nullptr, true));
    EXPECT_TRUE(app.OnWorkbookEvent13(nullptr));
    EXPECT_FALSE(app.OnWorkbookNewSheet(nullptr, nullptr));
    EXPECT_FALSE(app.OnWorkbookEvent15(nullptr));
    EXPECT_FALSE(app.OnWorkbookEvent16(nullptr));
    EXPECT_FALSE(app.OnAfterCalculate());
    EXPECT_FALSE(app.OnWorkbookAfterSave(nullptr, true));
    EXPECT_THAT(told, ElementsAre("run H B 1", "run H SR 2", "run H SR 2", "run H SR 2", "run H S 1",
                                  "run H S 1", "run H S 1", "run H SR 2", "run H B 1", "run H B 1",
                                  "run H B 1", "run H B 1", "run H BF 2", "run H B 1", "run H BS 2",
                                  "run H B 1", "run H B 1", "run H  0", "run H BF 2"));
}

TEST_F(HostEventTest, the_reserved_events_do_nothing) {
    app.eventHandlers.fill("H");
    app.OnReservedEvent17();
    app.OnReservedEvent18();
    app.OnReservedEvent19();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HostEventTest, a_call_that_fails_is_answered_with_false) {
    app.eventHandlers[11] = "H";
    NotingComHelper::succeeds = false;
    EXPECT_FALSE(app.OnWorkbookBeforeClose(nullptr));
}

TEST_F(HostEventTest, a_number_beyond_the_handlers_has_none) {
    app.observerFunctionName = u"observer";
    EXPECT_FALSE(app.RaiseEvent(22, true, "", {}));
    EXPECT_THAT(told, IsEmpty());
}

} // namespace
