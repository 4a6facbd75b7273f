// An open after a failed one, of which nothing must remain.

#include "add_in_fixture.h"
#include "tests/xllrt/event/recording_integration.h"
#include "tests/xllrt/event/recording_parts.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using namespace metrify;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class BookObserver final : public CXlEventStaticObserver<CXlWorkbookOpenEvent> {
  public:
    void Notify(CXlWorkbookEventArgs& /*args*/) override { ++notified; }
    int notified = 0;
};

class AddingObserver final : public CXlRegisterFunctionsEventStaticObserver {
  public:
    void Notify(CXlEventArgs& /*args*/) override {
        CXllApp::Instance()->functions.Add(SimpleFunction(u"Added"));
    }
};

class ReopenTest : public AddInTest {
  protected:
    ReopenTest() {
        app.functions.Add(SimpleFunction(u"Func"));
        app.events.AttachEarly();
    }
    ~ReopenTest() override { app.events.DetachAll(); }

    // Connecting to the events of the host fails, which happens at the end of a load.
    std::vector<std::string> FailToConnect() {
        integration.script.connects = false;
        integration.script.failure = {u"no events", 0};
        EXPECT_EQ(OpenAddIn(), 0);
        integration.script.connects = true;
        return host.TakeCalls();
    }

    std::vector<std::string> Reopen() {
        EXPECT_EQ(OpenAddIn(), 1);
        return host.TakeCalls();
    }

    std::vector<std::u16string> FunctionNames() const {
        std::vector<std::u16string> names;
        for (const CXlFunctionDescriptor* descriptor : app.functions.All())
            names.push_back(descriptor->functionName);
        return names;
    }

    RecordingIntegration integration;
    RecordingApp app{host, integration};
    BookObserver book_observer;
    const RecordingObserver close_observer{host, CXllCloseEvent::Chain(), "close observer"};
};

TEST_F(ReopenTest, an_open_that_fails_to_connect_to_events_unregisters_and_then_shows_the_alert) {
    const std::vector<std::string> calls = FailToConnect();
    EXPECT_THAT(calls, Contains("12 xlfUnregister(1)"));
    EXPECT_THAT(calls, Contains("12 xlfUnregister(2)"));
    EXPECT_EQ(calls.back(), "12 xlcAlert(\"Unexpected error during initialization:\nno events\n"
                            "Recording will not be opened\", 3)");
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func"));
    for (const CXlFunctionDescriptor* descriptor : app.functions.All())
        EXPECT_EQ(descriptor->registered, 0);
}

TEST_F(ReopenTest, observers_are_attached_once) {
    FailToConnect();
    CXlEventArgs args;
    app.events.close.Notify(args);
    EXPECT_THAT(host.TakeCalls(), Not(Contains("close observer"))) << "while it is not open, not at all";
    Reopen();
    CloseAddIn();
    EXPECT_THAT(host.TakeCalls(), ElementsAre("close observer", "OnClose"));
    CXlWorkbookEventArgs book;
    app.events.workbookOpen.Notify(book);
    EXPECT_EQ(book_observer.notified, 1);
    app.events.DetachAll();
    app.events.close.Notify(args);
    app.events.workbookOpen.Notify(book);
    EXPECT_THAT(host.TakeCalls(), testing::IsEmpty()) << "nothing is left of them";
    EXPECT_EQ(book_observer.notified, 1);
}

TEST_F(ReopenTest, functions_are_registered_once) {
    const AddingObserver adding_observer;
    app.events.DetachAll();
    app.events.AttachEarly();
    FailToConnect();
    std::vector<std::string> registrations = Reopen();
    std::erase_if(registrations,
                  [](const std::string& call) { return !call.starts_with("12 xlfRegister("); });
    EXPECT_THAT(registrations, ElementsAre(HasSubstr("\"Func\""), HasSubstr("\"xll_Metrify_observer\""),
                                           HasSubstr("\"Added\"")));
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func", u"xll_Metrify_observer", u"Added"));
}

TEST_F(ReopenTest, a_user_who_declined_may_agree_later) {
    host.On(xlfRegister, Reply{0, Reply::Error{xlerrValue}});
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func"));
    host.On(xlfRegister, Reply{0, 7.0});
    host.TakeCalls();
    EXPECT_THAT(Reopen(), Contains("OnOpened"));
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func", u"xll_Metrify_observer"));
}

TEST_F(ReopenTest, an_exception_that_passes_leaves_nothing_either) {
    class Throwing final : public CXlEventStaticObserver<CXlRegisterFunctionsEvent> {
      public:
        void Notify(CXlEventArgs& /*args*/) override {
            if (throws)
                throw std::logic_error("not ours");
        }
        bool throws = true;
    };
    Throwing throwing;
    app.events.registerFunctions.AddObserver(&throwing);
    EXPECT_THROW(OpenAddIn(), std::logic_error);
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func"));
    throwing.throws = false;
    Reopen();
    EXPECT_THAT(FunctionNames(), ElementsAre(u"Func", u"xll_Metrify_observer"));
    app.events.registerFunctions.RemoveObserver(&throwing);
}

TEST_F(ReopenTest, a_failed_open_removes_the_hook_of_the_formula_dialog) {
    const WizardIntegration wizards(host, true, true);
    RecordingApp wizard_app(host, wizards);
    host.On(xlfRegister, Reply{0, Reply::Error{xlerrValue}});
    EXPECT_EQ(OpenAddIn(), 0);
    std::vector<std::string> calls = host.TakeCalls();
    EXPECT_THAT(calls, Contains("registry held"));
    EXPECT_THAT(calls, Contains("registry released"));
    EXPECT_FALSE(wizard_app.ComHelper().HoldsRegistry());
    host.On(xlfRegister, Reply{0, 7.0});
    EXPECT_THAT(Reopen(), Contains("registry held"));
    wizard_app.events.DetachAll();
}

} // namespace
