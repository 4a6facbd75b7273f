#include "add_in_fixture.h"
#include "tests/xllrt/event/recording_parts.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/platform/module_handle.h"
#include "xllrt/platform/module_path.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// ---- The object

class AppTest : public AddInTest {};

TEST_F(AppTest, the_last_one_constructed_is_the_instance) {
    EXPECT_EQ(CXllApp::Instance(), nullptr);
    const RecordingApp first(host);
    EXPECT_EQ(CXllApp::Instance(), &first);
    const RecordingApp second(host);
    EXPECT_EQ(CXllApp::Instance(), &second);
}

TEST_F(AppTest, an_application_without_wizard_detector_throws_message_31) {
    class NoDetector final : public CXlIntegration {
      public:
        std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const override { return nullptr; }
    };
    const NoDetector integration;
    try {
        const CXllApp app(integration);
        FAIL() << "nothing was thrown";
    } catch (const CXlIllegalArgumentException& exception) {
        EXPECT_STREQ(exception.what(), "Illegal argument");
    }
    EXPECT_EQ(CXllApp::Instance(), nullptr);
}

TEST_F(AppTest, an_application_has_these_defaults) {
    CXllApp app;
    app.OnAutoAdd();
    EXPECT_EQ(app.AutoAddResult(), 1);
    app.OnAutoRemove();
    EXPECT_EQ(app.Reserved3(), 1);
    EXPECT_EQ(app.Reserved4(), 1);
    app.OnBeforeOpen();
    EXPECT_EQ(app.OnOpen(), 1);
    app.OnClose();
    app.OnOpened();
    EXPECT_EQ(app.OnProcessAttach(), 1);
    EXPECT_EQ(app.modulePath, ModulePath());
    EXPECT_EQ(app.OnProcessDetach(), 1);
    EXPECT_EQ(app.RibbonMode(), -1);
    EXPECT_FALSE(app.Ribbon().IsEnabled());
    EXPECT_FALSE(app.shortRegistration);
    EXPECT_THAT(app.eventHandlers, Each(std::string()));
    EXPECT_THAT(app.eventSwitches, Each(false));
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(AppTest, the_module_text_is_the_hosts_name_or_empty) {
    CXllApp app;
    CXlOper name;
    EXPECT_EQ(app.GetHostName(name), 0);
    EXPECT_EQ(name.ToText(), "C:\\Addins\\Metrify.xll");
    EXPECT_EQ(app.GetModuleText(), "C:\\Addins\\Metrify.xll");
    host.On(xlGetName, Reply::Refused());
    EXPECT_EQ(app.GetHostName(name), xlretFailed);
    EXPECT_EQ(app.GetModuleText(), "");
}

TEST_F(AppTest, exceptions_become_texts_and_errors) {
    CXllApp app;
    CXlOper result;
    app.ExceptionToValue(result, CXlRuntimeException(std::string("went wrong")));
    EXPECT_EQ(result.ToText(), "#ERROR: went wrong");
    app.ExceptionToValue(result, CXlErrorException(30U, xlerrNA));
    EXPECT_TRUE(result.IsError());
}

TEST_F(AppTest, ribbon_callbacks_without_answer_get_a_default_by_their_type) {
    CXllApp app;
    const auto answer = [&app](std::int32_t type) {
        CXlOper result(true);
        XlRibbonCallback callback;
        callback.type = type;
        app.GetRibbonDefault(result, callback);
        return result.State() == 0 ? std::string("nothing") : Rendered(*result.Record4());
    };
    for (const int type : {2, 4, 5, 6, 7, 9, 10, 17, 18, 19, 20, 21, 23, 27, 29, 30})
        EXPECT_EQ(answer(type), "\"\"") << type;
    for (const int type : {3, 11, 12, 13, 14})
        EXPECT_EQ(answer(type), "FALSE") << type;
    for (const int type : {8, 15, 16, 22, 28})
        EXPECT_EQ(answer(type), "-1") << type;
    for (const int type : {0, 1, 24, 25, 26, 31, -1})
        EXPECT_EQ(answer(type), "nothing") << type;
}

// ---- The process entry

TEST_F(AppTest, attach_keeps_the_module_and_notifies_the_application) {
    RecordingApp app(host);
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 1);
    EXPECT_EQ(ModuleHandle(), &app);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnProcessAttach"));
    ProcessEntry(&app, ProcessReason::detach);
    EXPECT_EQ(ModuleHandle(), nullptr);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("OnProcessDetach"));
    AllocateThreadStates();
}

TEST_F(AppTest, an_application_can_have_the_module_refused) {
    RecordingApp app(host);
    app.attach_result = 0;
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 0);
}

TEST_F(AppTest, without_an_application_attach_works) {
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::attach), 1);
}

TEST_F(AppTest, a_thread_start_changes_nothing_and_a_thread_end_destroys_its_state) {
    RecordingApp app(host);
    ThisThreadState().staticResult.SetNumber(5.0);
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::thread_attach), 1);
    EXPECT_EQ(ThisThreadState().staticResult.ToNumber(), 5.0);
    EXPECT_EQ(ProcessEntry(nullptr, ProcessReason::thread_detach), 1);
    EXPECT_EQ(ThisThreadState().staticResult.State(), 0);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(AppTest, a_call_back_into_the_entry_gives_1_and_does_nothing) {
    class Reentering final : public CXllApp {
      public:
        int OnProcessAttach() override {
            ++attaches;
            inner = ProcessEntry(nullptr, ProcessReason::attach);
            return 1;
        }
        int attaches = 0;
        int inner = 0;
    };
    Reentering app;
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 1);
    EXPECT_EQ(app.attaches, 1);
    EXPECT_EQ(app.inner, 1);
    EXPECT_EQ(ModuleHandle(), &app);
}

TEST_F(AppTest, detach_clears_observers_functions_and_marks) {
    class Observer final : public CXlStaticEventObserver<CXllOpenEventArgs> {
      public:
        Observer() : CXlStaticEventObserver(CXllOpenEvent::Chain()) {}
        void Notify(CXllOpenEventArgs& /*args*/) override { ++notified; }
        int notified = 0;
    };
    Observer observer;
    CXllApp app;
    app.OnProcessAttach();
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_EQ(observer.notified, 1);
    EXPECT_TRUE(app.isOpenedMark);
    app.OnProcessDetach();
    EXPECT_FALSE(app.isOpenedMark);
    EXPECT_THAT(app.functions.All(), IsEmpty());
    EXPECT_EQ(descriptor.registered, 0);
    EXPECT_EQ(descriptor.registerId, 0.0);
    CXllOpenEventArgs args;
    app.events.open.Notify(args);
    EXPECT_EQ(observer.notified, 1);
}

// ---- The wizard registry

TEST_F(AppTest, a_registry_with_entries_is_held_from_load_to_close) {
    const WizardIntegration integration(host, true, true);
    const RecordingApp app(host, integration);
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_THAT(host.TakeCalls(), Contains("registry held"));
    CloseAddIn();
    EXPECT_THAT(host.TakeCalls(), ElementsAre("registry released", "OnClose", "registry closed"));
}

TEST_F(AppTest, an_empty_registry_and_one_that_cannot_be_readied_are_not_held_but_closed) {
    for (const bool has_entries : {false, true}) {
        const WizardIntegration integration(host, has_entries, !has_entries);
        const RecordingApp app(host, integration);
        SetAddInOpened(false);
        EXPECT_EQ(OpenAddIn(), 1);
        EXPECT_THAT(host.TakeCalls(), Not(Contains("registry held")));
        CloseAddIn();
        EXPECT_THAT(host.TakeCalls(), ElementsAre("OnClose", "registry closed"));
    }
}

// ---- The list of add-ins

class ManagerInfoTest : public AddInTest {
  protected:
    template <class Record>
    static Record Value(double number) {
        Record record{};
        record.xltype = xltypeNum;
        record.val.num = number;
        return record;
    }
    template <class Record>
    static Record IntValue(std::int16_t number) {
        Record record{};
        record.xltype = xltypeInt;
        record.val.w = number;
        return record;
    }

    RecordingApp app{host};
};

TEST_F(ManagerInfoTest, action_1_gives_the_name_whatever_its_type) {
    XLOPER12 number = Value<XLOPER12>(1.0);
    XLOPER12 integer = IntValue<XLOPER12>(1);
    XCHAR units[] = u"\1"
                    u"1";
    XLOPER12 text{};
    text.xltype = xltypeStr;
    text.val.str = units;
    for (XLOPER12* action : {&number, &integer, &text}) {
        XLOPER12* answer = xlAddInManagerInfo12(action);
        EXPECT_EQ(Rendered(*answer), "\"Recording\"");
        EXPECT_EQ(answer->xltype, static_cast<unsigned>(xltypeStr | xlbitDLLFree));
        xlAutoFree12(answer);
    }
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlCoerce(1, 2048i)", "12 xlCoerce(1i, 2048i)", "12 xlCoerce(\"1\", 2048i)"));
}

TEST_F(ManagerInfoTest, another_action_gives_error_15) {
    XLOPER12 action = IntValue<XLOPER12>(2);
    const XLOPER12* answer = xlAddInManagerInfo12(&action);
    EXPECT_EQ(Rendered(*answer), "#15");
    EXPECT_EQ(answer->xltype, xltypeErr);
    XLOPER action4 = IntValue<XLOPER>(2);
    EXPECT_EQ(Rendered(*xlAddInManagerInfo(&action4)), "#15");
}

TEST_F(ManagerInfoTest, an_action_that_cannot_be_coerced_gives_error_15) {
    host.On(xlCoerce, Reply::Refused());
    XLOPER12 action = IntValue<XLOPER12>(1);
    EXPECT_EQ(Rendered(*xlAddInManagerInfo12(&action)), "#15");
}

TEST_F(ManagerInfoTest, the_narrow_entry_asks_in_the_narrow_family) {
    XLOPER action = Value<XLOPER>(1.0);
    XLOPER* answer = xlAddInManagerInfo(&action);
    EXPECT_EQ(Rendered(*answer), "\"Recording\"");
    EXPECT_EQ(answer->xltype, xltypeStr | xlbitDLLFree);
    xlAutoFree(answer);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlCoerce(1, 2048i)"));
}

TEST_F(ManagerInfoTest, a_long_name_is_cut_for_the_narrow_family_and_whole_in_the_wide) {
    app.addInName.Assign(std::string(300, 'n'));
    XLOPER action4 = IntValue<XLOPER>(1);
    XLOPER* narrow = xlAddInManagerInfo(&action4);
    EXPECT_EQ(Rendered(*narrow), '"' + std::string(255, 'n') + '"');
    xlAutoFree(narrow);
    XLOPER12 action12 = IntValue<XLOPER12>(1);
    XLOPER12* wide = xlAddInManagerInfo12(&action12);
    EXPECT_EQ(Rendered(*wide), '"' + std::string(300, 'n') + '"');
    xlAutoFree12(wide);
}

TEST_F(ManagerInfoTest, the_record_is_cleared_on_every_call) {
    XLOPER12 name = IntValue<XLOPER12>(1);
    XLOPER12* answer = xlAddInManagerInfo12(&name);
    xlAutoFree12(answer);
    XLOPER12 other = IntValue<XLOPER12>(2);
    EXPECT_EQ(xlAddInManagerInfo12(&other), answer) << "one static record";
    EXPECT_EQ(Rendered(*answer), "#15");
    xlAutoFree12(answer);
    EXPECT_EQ(Rendered(*answer), "#15") << "an error holds nothing to release";
}

TEST_F(ManagerInfoTest, the_exports_forward) {
    EXPECT_EQ(xlAutoAdd(), 1);
    EXPECT_EQ(xlAutoOpen(), 1);
    EXPECT_EQ(xlAutoOpen(), 0);
    EXPECT_EQ(xlAutoRemove(), 1);
    EXPECT_EQ(xlAutoClose(), 1);
    const std::vector<std::string> calls = host.TakeCalls();
    EXPECT_EQ(calls.front(), "OnAutoAdd");
    EXPECT_THAT(calls, Contains("OnAutoRemove"));
    EXPECT_EQ(calls.back(), "OnClose");
}

} // namespace
