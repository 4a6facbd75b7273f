#include "add_in_fixture.h"
#include "tests/xllrt/event/recording_parts.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// ---- Helpers

class OpenTest : public AddInTest {
  protected:
    // What was asked, without the registration of the observer function, which has tests of its own.
    std::vector<std::string> Open(int expected) {
        EXPECT_EQ(OpenAddIn(), expected);
        return host.TakeCalls();
    }

    RecordingApp app{host};
};

class CancellingObserver final : public CXlStaticEventObserver<CXllOpenEventArgs> {
  public:
    explicit CancellingObserver(ScriptedHost& host)
        : CXlStaticEventObserver(CXllOpenEvent::Chain()), host_(host) {}
    void Notify(CXllOpenEventArgs& args) override {
        host_.Note("cancelling observer");
        args.cancel = true;
    }

  private:
    ScriptedHost& host_;
};

class ThrowingObserver final : public CXlStaticEventObserver<CXllOpenEventArgs> {
  public:
    ThrowingObserver() : CXlStaticEventObserver(CXllOpenEvent::Chain()) {}
    void Notify(CXllOpenEventArgs& /*args*/) override {
        throw CXlRuntimeException(std::string("observer failed"));
    }
};

const char* const kObserverRegistration =
    "12 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"CXlApp_ObserverEventHandler12\", \"RJQQQ\", "
    "\"xll_Metrify_observer\", \"EventNumber,Arg1,Arg2,Arg3\", \"2\", \"User Defined\", \"\", "
    "\"C:\\Addins\\Metrify.chm!1\", \"\")";

// ---- A load

TEST_F(OpenTest, a_load_asks_the_host_in_this_order) {
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    EXPECT_THAT(Open(1), ElementsAre("4 xlfGetWorkspace|xlIntl(2i)",       // the version
                                     "4 xlCoerce|xlIntl(\"14.0\", 2048i)", // as a number
                                     "12 xlfGetWorkspace(37)",             // the row letter
                                     "12 xlfGetWorkspace(37)",             // the column letter
                                     "12 xlGetName()",                     // the host path
                                     "OnBeforeOpen", "OnOpen",             //
                                     "12 xlGetName()",                     // for the observer's name
                                     "12 xlGetName()",                     // for the registrations
                                     kObserverRegistration, "ribbon on",   //
                                     "12 xlfGetWorkspace(37)", "12 xlfGetWorkspace(37)",
                                     "12 xlfGetWorkspace(37)", // the separators
                                     "OnOpened"));
}

TEST_F(OpenTest, a_narrow_host_is_asked_in_the_narrow_family) {
    host.version = u"11.0";
    EXPECT_THAT(Open(1), Each(Not(HasSubstr("12 "))));
    EXPECT_EQ(HostVersion(), 11);
}

TEST_F(OpenTest, a_load_leaves_paths_letters_and_marks) {
    Open(1);
    EXPECT_EQ(app.hostPath, "C:\\Addins\\Metrify.xll");
    EXPECT_EQ(app.addInDirectory, "C:\\Addins");
    EXPECT_EQ(app.helpFile, "C:\\Addins\\Metrify.chm");
    EXPECT_EQ(app.observerFunctionName, u"xll_Metrify_observer");
    EXPECT_EQ(app.listSeparator, ';');
    EXPECT_EQ(app.rowLetter, 'Z');
    EXPECT_EQ(app.columnLetter, 'S');
    EXPECT_TRUE(app.isOpenedMark);
    EXPECT_TRUE(IsAddInOpened());
}

TEST_F(OpenTest, a_second_open_is_refused_without_a_message) {
    Open(1);
    EXPECT_THAT(Open(0), IsEmpty());
    CloseAddIn();
    host.TakeCalls();
    EXPECT_THAT(Open(0), IsEmpty());
}

TEST_F(OpenTest, a_failed_open_may_be_tried_again) {
    app.open_result = 0;
    Open(0);
    app.open_result = 1;
    EXPECT_THAT(Open(1), Contains("OnOpened"));
}

// ---- The help file

TEST_F(OpenTest, a_preset_help_file_is_kept) {
    app.helpFile = "other.hlp";
    Open(1);
    EXPECT_EQ(app.helpFile, "other.hlp");
}

TEST_F(OpenTest, a_path_of_three_characters_gives_no_help_file) {
    host.path = u"xll";
    Open(1);
    EXPECT_EQ(app.helpFile, "");
}

TEST_F(OpenTest, a_path_of_four_characters_gives_one) {
    host.path = u".xll";
    Open(1);
    EXPECT_EQ(app.helpFile, ".chm");
}

TEST_F(OpenTest, a_host_that_does_not_give_the_path_leaves_it_empty) {
    host.On(xlGetName, Reply::Refused());
    Open(1);
    EXPECT_EQ(app.hostPath, "");
    EXPECT_EQ(app.addInDirectory, "");
    EXPECT_EQ(app.helpFile, "");
}

// ---- Loads that fail quietly

TEST_F(OpenTest, on_open_with_0_stops_the_load_quietly) {
    app.open_result = 0;
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    const RecordingObserver observer(host, CXllCloseEvent::Chain(), "close");
    const std::vector<std::string> calls = Open(0);
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlcAlert"))));
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlfRegister"))));
    EXPECT_THAT(calls, Not(Contains("OnOpened")));
    EXPECT_EQ(calls.back(), "ribbon on") << "the ribbon step is reached all the same";
    EXPECT_TRUE(app.isOpenedMark);
    EXPECT_FALSE(IsAddInOpened());
    // No observer was attached.
    SetAddInOpened(true);
    CloseAddIn();
    EXPECT_THAT(host.TakeCalls(), Not(Contains("close")));
}

TEST_F(OpenTest, a_set_cancel_mark_stops_the_load_quietly_after_all_observers_were_notified) {
    CXllOpenEvent::StaticObserver*& chain = CXllOpenEvent::Chain();
    ASSERT_EQ(chain, nullptr);
    const CancellingObserver first(host);
    const CancellingObserver second(host);
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    app.events.AttachEarly();
    const std::vector<std::string> calls = Open(0);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "cancelling observer"), 2);
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlcAlert"))));
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlfRegister"))));
    EXPECT_EQ(calls.back(), "ribbon on");
    EXPECT_TRUE(app.isOpenedMark);
    app.events.DetachAll();
}

// ---- Registrations that fail

TEST_F(OpenTest, if_the_user_declines_everything_is_unregistered_and_the_load_fails) {
    app.functions.Add(SimpleFunction(u"Good"));
    host.On(xlfRegister, [](const std::vector<std::string>& arguments) {
        return arguments.at(3) == "\"Good\"" ? Reply{0, 5.0} : Reply{0, Reply::Error{xlerrValue}};
    });
    const std::vector<std::string> calls = Open(0);
    EXPECT_THAT(calls, Contains("12 xlfUnregister(5)"));
    EXPECT_THAT(calls, Contains("12 xlfSetName(\"Good\")"));
    EXPECT_THAT(calls, Contains("12 xlfSetName(\"xll_Metrify_observer\")"));
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlcAlert"))));
    EXPECT_THAT(calls, Not(Contains("OnOpened")));
    EXPECT_TRUE(app.isOpenedMark);
    EXPECT_FALSE(IsAddInOpened());
}

TEST_F(OpenTest, if_the_user_accepts_the_add_in_is_loaded_without_the_functions) {
    host.says_yes = true;
    host.On(xlfRegister, Reply{0, Reply::Error{xlerrValue}});
    const std::vector<std::string> calls = Open(1);
    EXPECT_THAT(calls, Contains(HasSubstr("ask Add-in Load Failure: ")));
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlfSetName"))));
    EXPECT_THAT(calls, Contains("OnOpened"));
}

// ---- Exceptions

TEST_F(OpenTest, an_observer_that_throws_gives_the_alert_and_ends_the_load) {
    const ThrowingObserver observer;
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    app.events.AttachEarly();
    const std::vector<std::string> calls = Open(0);
    EXPECT_EQ(calls.back(), "12 xlcAlert(\"Unexpected error during initialization:\nobserver failed\n"
                            "Recording will not be opened\", 3)");
    EXPECT_THAT(calls, Not(Contains(HasSubstr("xlfRegister"))));
    EXPECT_THAT(calls, Not(Contains("ribbon on")));
    EXPECT_FALSE(app.isOpenedMark);
    EXPECT_FALSE(IsAddInOpened());
    app.events.DetachAll();
}

TEST_F(OpenTest, without_a_name_the_alert_names_the_host_path) {
    const ThrowingObserver observer;
    app.addInName.Assign("");
    app.modulePath = "module path";
    app.events.AttachEarly();
    EXPECT_EQ(Open(0).back(), "12 xlcAlert(\"Unexpected error during initialization:\nobserver failed\n"
                              "C:\\Addins\\Metrify.xll will not be opened\", 3)");
    app.events.DetachAll();
}

TEST_F(OpenTest, without_name_and_host_path_it_names_the_module_path) {
    const ThrowingObserver observer;
    app.addInName.Assign("");
    app.modulePath = "module path";
    host.On(xlGetName, Reply::Refused());
    app.events.AttachEarly();
    EXPECT_THAT(Open(0).back(), HasSubstr("\nmodule path will not be opened"));
    app.events.DetachAll();
}

TEST_F(OpenTest, without_any_of_them_it_says_add_in) {
    const ThrowingObserver observer;
    app.addInName.Assign("");
    host.On(xlGetName, Reply::Refused());
    app.events.AttachEarly();
    EXPECT_THAT(Open(0).back(), HasSubstr("\nAdd-in will not be opened"));
    app.events.DetachAll();
}

TEST_F(OpenTest, without_an_instance_the_alert_says_so) {
    CXllApp::SetInstance(nullptr);
    EXPECT_EQ(Open(0).back(),
              "12 xlcAlert(\"Unexpected error during initialization:\n"
              "No instance of CXllApp has been instantiated.\nAdd-in will not be opened\", 3)");
    EXPECT_FALSE(IsAddInOpened());
}

TEST_F(OpenTest, other_exceptions_pass_through) {
    class Failing final : public CXlStaticEventObserver<CXlEventArgs> {
      public:
        Failing() : CXlStaticEventObserver(CXlRegisterFunctionsEvent::Chain()) {}
        void Notify(CXlEventArgs& /*args*/) override { throw std::logic_error("not ours"); }
    };
    const Failing observer;
    app.events.AttachEarly();
    EXPECT_THROW(OpenAddIn(), std::logic_error);
    app.events.DetachAll();
}

// ---- Closing

TEST_F(OpenTest, closing_notifies_the_observers_and_then_the_application) {
    const RecordingObserver observer(host, CXllCloseEvent::Chain(), "close");
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    Open(1);
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("close", "OnClose", "ribbon off"));
    EXPECT_TRUE(IsAddInOpened()) << "the flag stays";
    EXPECT_EQ(app.functions.All().size(), 1U) << "functions stay registered";
    app.events.DetachAll();
}

TEST_F(OpenTest, closing_after_a_failed_load_skips_observers_and_application) {
    const RecordingObserver observer(host, CXllCloseEvent::Chain(), "close");
    app.events.AttachRest();
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
    app.open_result = 0;
    Open(0);
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("ribbon off"));
    app.events.DetachAll();
}

TEST_F(OpenTest, a_ribbon_that_is_not_enabled_or_not_available_is_left_alone) {
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host, false, true), 0);
    EXPECT_THAT(Open(1), Not(Contains("ribbon on")));
    CloseAddIn();
    app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host, true, false), 0);
    CloseAddIn();
    EXPECT_THAT(host.TakeCalls(), Not(Contains("ribbon off")));
}

TEST_F(OpenTest, closing_without_an_instance_gives_1) {
    CXllApp::SetInstance(nullptr);
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

// ---- Adding and removing

TEST_F(OpenTest, adding_notifies_the_application_and_returns_its_answer) {
    EXPECT_EQ(AddAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnAutoAdd"));
    app.add_result = -5;
    EXPECT_EQ(AddAddIn(), 1);
    app.add_result = 0;
    EXPECT_EQ(AddAddIn(), 0);
}

TEST_F(OpenTest, removing_unregisters_what_was_opened) {
    Open(1);
    EXPECT_EQ(RemoveAddIn(), 1);
    const std::vector<std::string> calls = host.TakeCalls();
    EXPECT_EQ(calls.front(), "OnAutoRemove");
    EXPECT_THAT(calls, Contains("12 xlfUnregister(1)"));
}

TEST_F(OpenTest, removing_with_the_load_failed_does_nothing_at_all) {
    app.open_result = 0;
    Open(0);
    EXPECT_EQ(RemoveAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

} // namespace
