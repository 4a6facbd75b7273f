// The order of the steps of an open and of a close, and the state at each step.

#include "add_in_fixture.h"
#include "tests/xllrt/event/recording_parts.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

class OpenObserver final : public CXlEventStaticObserver<CXllOpenEvent> {
  public:
    explicit OpenObserver(ScriptedHost& host) : host_(host) {}
    void Notify(CXllOpenEventArgs& args) override {
        host_.Note("open observer");
        args.cancel = cancels;
    }

    bool cancels = false;

  private:
    ScriptedHost& host_;
};

class ClosingObserver final : public CXlEventStaticObserver<CXllCloseEvent> {
  public:
    void Notify(CXlEventArgs& /*args*/) override { SetAddInOpened(false); }
};

class BookObserver final : public CXlEventStaticObserver<CXlWorkbookOpenEvent> {
  public:
    void Notify(CXlWorkbookEventArgs& /*args*/) override {}
};

class StepsTest : public AddInTest {
  protected:
    StepsTest() {
        app.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
        app.events.AttachEarly();
        host.present = [this] { return Present(); };
        host.On(xlfGetWorkspace, [this](const std::vector<std::string>& arguments) {
            const bool is_version = arguments.at(0) == "2i";
            host.Note(is_version ? "version" : "settings");
            return is_version ? Reply{0, host.version} : Reply{0, host.international};
        });
        host.On(xlfRegister, [this](const std::vector<std::string>& /*arguments*/) {
            host.Note("register");
            return registration;
        });
    }
    ~StepsTest() override {
        host.present = {};
        app.events.DetachAll();
    }

    // The state of the application at this point.
    std::string Present() const {
        std::string words;
        const auto add = [&words](bool is_there, const char* word) { words += is_there ? word : ""; };
        add(!app.hostPath.empty(), ", path");
        add(!app.addInDirectory.empty(), ", directory");
        add(!app.helpFile.empty(), ", help");
        add(app.functions.FindFunction("xll_Metrify_observer") != nullptr, ", observer function");
        add(app.eventSwitches[8], ", events");
        add(app.listSeparator != 0, ", separators");
        add(app.isOpenedMark, ", mark");
        add(IsAddInOpened(), ", open");
        return words;
    }

    // Excludes the individual calls of the host.
    std::vector<std::string> TakeSteps() {
        std::vector<std::string> steps = host.TakeCalls();
        std::erase_if(steps, [](const std::string& step) {
            return step.starts_with("12 ") || step.starts_with("4 ") || step.starts_with("find ");
        });
        return steps;
    }

    Reply registration{0, 1.0};
    const WizardIntegration integration{host, true, true};
    RecordingApp app{host, integration};
    OpenObserver open_observer{host};
    const RecordingObserver register_observer{host, CXlRegisterFunctionsEvent::Chain(), "register observer"};
    const RecordingObserver close_observer{host, CXllCloseEvent::Chain(), "close observer"};
    const BookObserver book_observer;
};

// ---- Opening

TEST_F(StepsTest, an_open_takes_all_steps_in_this_order) {
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_THAT(
        TakeSteps(),
        ElementsAre("version", "settings", "settings", // the row letter and the column letter
                    "OnBeforeOpen, path, directory", "OnOpen, path, directory",
                    "open observer, path, directory", "registry readied, path, directory",
                    "registry held, path, directory",
                    "register observer, path, directory, help, observer function",
                    "register, path, directory, help, observer function",
                    "ribbon on, path, directory, help, observer function",
                    // The list separator, the row letter and the column letter.
                    "settings, path, directory, help, observer function, events",
                    "settings, path, directory, help, observer function, events",
                    "settings, path, directory, help, observer function, events",
                    "OnOpened, path, directory, help, observer function, events, separators, mark, open"));
}

TEST_F(StepsTest, an_open_that_the_application_stops_continues_with_the_ribbon) {
    app.open_result = 0;
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_THAT(TakeSteps(), ElementsAre("version", "settings", "settings", "OnBeforeOpen, path, directory",
                                         "OnOpen, path, directory", "ribbon on, path, directory"));
    EXPECT_EQ(Present(), ", path, directory, mark");
}

TEST_F(StepsTest, an_open_that_an_observer_cancels_continues_with_the_ribbon) {
    open_observer.cancels = true;
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_THAT(TakeSteps(), ElementsAre("version", "settings", "settings", "OnBeforeOpen, path, directory",
                                         "OnOpen, path, directory", "open observer, path, directory",
                                         "ribbon on, path, directory"));
    EXPECT_EQ(Present(), ", path, directory, mark");
}

TEST_F(StepsTest, an_open_that_the_user_declines_continues_with_the_ribbon) {
    registration = {0, Reply::Error{xlerrValue}};
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_EQ(Present(), ", path, directory, help, mark") << "no events, no separators";
    const std::vector<std::string> steps = TakeSteps();
    const auto ribbon =
        std::find(steps.begin(), steps.end(), "ribbon on, path, directory, help, observer function");
    ASSERT_NE(ribbon, steps.end());
    EXPECT_TRUE((ribbon - 1)->starts_with("register, ")) << "the name is hidden before";
}

// ---- Closing

TEST_F(StepsTest, a_close_takes_all_steps_in_this_order) {
    OpenAddIn();
    host.TakeCalls();
    host.present = {};
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(TakeSteps(), ElementsAre("registry released", "close observer", "OnClose", "ribbon off",
                                         "registry closed"));
}

TEST_F(StepsTest, if_an_observer_clears_the_opened_flag_the_application_is_not_closed) {
    const ClosingObserver closing_observer;
    OpenAddIn();
    host.TakeCalls();
    host.present = {};
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(TakeSteps(),
                ElementsAre("registry released", "close observer", "ribbon off", "registry closed"));
}

TEST_F(StepsTest, a_close_after_a_failed_open_leaves_observers_and_application_out) {
    app.open_result = 0;
    OpenAddIn();
    app.ComHelper().HoldRegistry(*app.WizardRegistry());
    host.TakeCalls();
    host.present = {};
    EXPECT_EQ(CloseAddIn(), 1);
    EXPECT_THAT(TakeSteps(), ElementsAre("registry released", "ribbon off", "registry closed"));
}

// ---- Adding

TEST_F(StepsTest, adding_notifies_the_application_before_it_gets_the_result) {
    class Refusing final : public CXllApp {
      public:
        void OnAutoAdd() override { result_ = 0; }
        int AutoAddResult() override { return result_; }

      private:
        int result_ = 1;
    };
    const Refusing refusing;
    EXPECT_EQ(AddAddIn(), 0);
}

// ---- The parts

TEST_F(StepsTest, the_parts_are_destroyed_in_this_order) {
    {
        CXllApp other(integration);
        other.SetRibbonImpl(std::make_unique<RecordingRibbon>(host), 0);
        host.TakeCalls();
    }
    EXPECT_THAT(TakeSteps(), ElementsAre("ribbon gone", "helper gone", "registry gone", "detector gone"));
}

TEST_F(StepsTest, a_destroyed_application_is_not_the_instance) {
    {
        const CXllApp other;
        EXPECT_EQ(CXllApp::Instance(), &other);
    }
    EXPECT_EQ(CXllApp::Instance(), nullptr);
}

TEST_F(StepsTest, an_application_that_was_replaced_leaves_the_instance_alone) {
    auto first = std::make_unique<CXllApp>();
    const CXllApp second;
    first.reset();
    EXPECT_EQ(CXllApp::Instance(), &second);
}

} // namespace
