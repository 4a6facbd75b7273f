// The ribbon of an application: the commands sent to its server and the answers to its callbacks.

#include "add_in_fixture.h"
#include "xllrt/app/ribbon.h"
#include "xllrt/app/ribbon_callback.h"
#include "xllrt/app/ribbon_command.h"
#include "xllrt/value/text_value.h"

#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class RibbonTest : public AddInTest {
  protected:
    RibbonTest() : app(host) { SetHostVersion(14); }

    RecordingApp app;
};

// Function 379 is the host's for real-time data.
std::string Command(const std::string& first, const std::string& second) {
    return "12 379(\"XlpRibbonServer.XlpRtdRibbonServer\", missing, \"Recording\", \"" + first + "\", \"" +
           second + "\")";
}

// ---- No ribbon

TEST_F(RibbonTest, an_application_starts_without_ribbon) {
    EXPECT_EQ(app.RibbonMode(), -1);
    EXPECT_FALSE(app.Ribbon().IsEnabled());
    EXPECT_FALSE(app.Ribbon().IsAvailable());
}

TEST_F(RibbonTest, no_ribbon_cannot_be_enabled) {
    EXPECT_FALSE(app.Ribbon().SetEnabled(true));
    EXPECT_FALSE(app.Ribbon().SetEnabled(true));
    EXPECT_FALSE(app.Ribbon().IsEnabled());
}

TEST_F(RibbonTest, the_null_ribbon_sends_nothing) {
    IXlpRibbonImpl& ribbon = app.Ribbon();
    ribbon.Activate();
    ribbon.Deactivate();
    ribbon.Reset();
    ribbon.Refresh();
    ribbon.Invalidate(TextValue("item"));
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(RibbonTest, without_ribbon_opening_and_closing_send_nothing_to_a_server) {
    OpenAddIn();
    CloseAddIn();
    EXPECT_THAT(host.TakeCalls(), Each(Not(HasSubstr("379"))));
    app.events.DetachAll();
}

// ---- Modes

TEST_F(RibbonTest, mode_0_is_the_shared_ribbon_which_starts_disabled) {
    EXPECT_TRUE(app.SetRibbonMode(0));
    EXPECT_EQ(app.RibbonMode(), 0);
    EXPECT_FALSE(app.Ribbon().IsEnabled());
    EXPECT_TRUE(app.Ribbon().IsAvailable());
}

TEST_F(RibbonTest, mode_minus_1_removes_the_ribbon) {
    app.SetRibbonMode(0);
    app.Ribbon().SetEnabled(true);
    EXPECT_TRUE(app.SetRibbonMode(-1));
    EXPECT_EQ(app.RibbonMode(), -1);
    EXPECT_FALSE(app.Ribbon().IsEnabled());
}

TEST_F(RibbonTest, any_other_mode_is_refused_and_keeps_the_ribbon) {
    app.SetRibbonMode(0);
    app.Ribbon().SetEnabled(true);
    const IXlpRibbonImpl* const before = &app.Ribbon();
    for (int mode : {5, 1, -2})
        EXPECT_FALSE(app.SetRibbonMode(mode)) << mode;
    EXPECT_EQ(&app.Ribbon(), before);
    EXPECT_EQ(app.RibbonMode(), 0);
    EXPECT_TRUE(app.Ribbon().IsEnabled());
}

// ---- The shared ribbon

TEST_F(RibbonTest, setting_the_shared_ribbon_enabled_gives_the_earlier_state) {
    CXlpRibbonImplShared ribbon;
    EXPECT_FALSE(ribbon.SetEnabled(true));
    EXPECT_TRUE(ribbon.SetEnabled(true));
    EXPECT_TRUE(ribbon.SetEnabled(false));
    EXPECT_FALSE(ribbon.IsEnabled());
}

TEST_F(RibbonTest, the_shared_ribbon_needs_a_host_of_version_12) {
    const CXlpRibbonImplShared ribbon;
    SetHostVersion(11);
    EXPECT_FALSE(ribbon.IsAvailable());
    SetHostVersion(12);
    EXPECT_TRUE(ribbon.IsAvailable());
}

TEST_F(RibbonTest, the_shared_ribbon_sends_its_commands_in_the_add_ins_name) {
    CXlpRibbonImplShared ribbon;
    ribbon.Activate();
    ribbon.Deactivate();
    ribbon.Reset();
    ribbon.Refresh();
    ribbon.Invalidate(TextValue("button7"));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(Command("<", ""), Command(">", ""), Command("", ""),
                                              Command("Recording", ""), Command("", "button7")));
}

TEST_F(RibbonTest, an_enabled_ribbon_is_switched_on_at_the_end_of_a_load_and_off_at_the_close) {
    app.SetRibbonMode(0);
    app.Ribbon().SetEnabled(true);
    OpenAddIn();
    EXPECT_THAT(host.TakeCallsOf("379"), ElementsAre(Command("<", "")));
    CloseAddIn();
    EXPECT_THAT(host.TakeCallsOf("379"), ElementsAre(Command(">", "")));
    app.events.DetachAll();
}

TEST_F(RibbonTest, a_ribbon_that_is_not_enabled_is_not_switched_on) {
    app.SetRibbonMode(0);
    OpenAddIn();
    CloseAddIn();
    EXPECT_THAT(host.TakeCallsOf("379"), IsEmpty());
    app.events.DetachAll();
}

TEST_F(RibbonTest, an_enabled_ribbon_sends_nothing_on_a_host_below_version_12) {
    host.version = u"11.0";
    SetHostVersion(0);
    app.SetRibbonMode(0);
    app.Ribbon().SetEnabled(true);
    OpenAddIn();
    CloseAddIn();
    EXPECT_THAT(host.TakeCallsOf("379"), IsEmpty());
    app.events.DetachAll();
}

TEST_F(RibbonTest, a_command_that_the_host_refuses_has_no_effect) {
    host.On(xlfRtd, Reply::Refused());
    SendRibbonCommand("first", u"second");
    EXPECT_THAT(host.TakeCalls(), ElementsAre(Command("first", "second")));
}

// ---- Answers that nobody gives

class RibbonDefaultTest : public RibbonTest {
  protected:
    CXlOper Default(int type) {
        CXlOper result(3.5);
        XlRibbonCallback callback;
        callback.type = type;
        app.GetRibbonDefault(result, callback);
        return result;
    }
};

TEST_F(RibbonDefaultTest, callbacks_for_a_text_get_the_empty_text) {
    for (int type : {2, 4, 5, 6, 7, 9, 10, 17, 18, 19, 20, 21, 23, 27, 29, 30}) {
        const CXlOper result = Default(type);
        EXPECT_TRUE(result.IsString()) << type;
        EXPECT_EQ(result.ToText(true), "") << type;
    }
}

TEST_F(RibbonDefaultTest, callbacks_for_a_boolean_get_false) {
    for (int type : {3, 11, 12, 13, 14}) {
        const CXlOper result = Default(type);
        EXPECT_TRUE(result.IsType(xltypeBool)) << type;
        EXPECT_FALSE(result.ToBool(true)) << type;
    }
}

TEST_F(RibbonDefaultTest, callbacks_for_a_number_get_minus_1) {
    for (int type : {8, 15, 16, 22, 28}) {
        const CXlOper result = Default(type);
        EXPECT_TRUE(result.IsType(xltypeNum)) << type;
        EXPECT_EQ(result.ToNumber(true), -1.0) << type;
    }
}

TEST_F(RibbonDefaultTest, all_other_callbacks_get_no_value) {
    for (int type : {0, 1, 24, 25, 26, 31, -1, 2147483647, -2147483647 - 1})
        EXPECT_EQ(Default(type).State(), 0) << type;
}

// ---- The macro that the server calls

class RibbonCallbackTest : public AddInTest {
  protected:
    // An application that keeps what the ribbon asked.
    class Asked final : public CXllApp {
      public:
        void GetRibbonDefault(CXlOper& result, const XlRibbonCallback& callback) override {
            if (throws)
                throw CXlRuntimeException(std::string("no such button"));
            asked = callback;
            CXllApp::GetRibbonDefault(result, callback);
        }

        XlRibbonCallback asked;
        bool throws = false;
    };

    RibbonCallbackTest() { SetHostVersion(14); }

    Asked app;
};

void ExpectAsked(const XlRibbonCallback& asked) {
    EXPECT_EQ(asked.type, 8);
    EXPECT_EQ(asked.id, "id");
    EXPECT_EQ(asked.tag, "tag");
    EXPECT_EQ(asked.index, 7);
    EXPECT_EQ(asked.text, "text");
    EXPECT_EQ(asked.selectedId, "selected");
    EXPECT_TRUE(asked.pressed);
}

TEST_F(RibbonCallbackTest, the_wide_entry_asks_the_application_with_the_record_and_gives_its_answer) {
    const XLOPER12* const answer = RibbonCallback_12(8, u"id", u"tag", 7, u"text", u"selected", 1);
    ExpectAsked(app.asked);
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeNum);
    EXPECT_EQ(answer->val.num, -1.0);
}

TEST_F(RibbonCallbackTest, the_narrow_entry_does_the_same) {
    SetHostVersion(11);
    const XLOPER* const answer = RibbonCallback_4(8, "id", "tag", 7, "text", "selected", 1);
    ExpectAsked(app.asked);
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeNum);
    EXPECT_EQ(answer->val.num, -1.0);
}

TEST_F(RibbonCallbackTest, texts_that_are_missing_are_empty_and_a_button_is_not_pressed_with_0) {
    RibbonCallback_12(1, nullptr, nullptr, 0, nullptr, nullptr, 0);
    EXPECT_EQ(app.asked.id, "");
    EXPECT_EQ(app.asked.selectedId, "");
    EXPECT_FALSE(app.asked.pressed);
}

TEST_F(RibbonCallbackTest, no_value_reaches_the_host_as_an_error_value) {
    const XLOPER12* const answer = RibbonCallback_12(1, u"", u"", 0, u"", u"", 0);
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeErr);
    EXPECT_EQ(answer->val.err, xlerrValue);
}

TEST_F(RibbonCallbackTest, an_exception_becomes_the_text_that_the_host_gets) {
    app.throws = true;
    XLOPER12* const answer = RibbonCallback_12(8, u"", u"", 0, u"", u"", 0);
    EXPECT_EQ(Rendered(*answer), "\"#ERROR: no such button\"");
    SetHostVersion(11);
    EXPECT_EQ(Rendered(*RibbonCallback_4(8, "", "", 0, "", "", 0)), "\"#ERROR: no such button\"");
}

TEST_F(RibbonCallbackTest, without_an_application_there_is_no_value) {
    CXllApp::SetInstance(nullptr);
    EXPECT_EQ(RibbonCallback_12(8, u"", u"", 0, u"", u"", 0)->val.err, xlerrValue);
    CXllApp::SetInstance(&app);
}

// ---- The macro's name

class RegistrarTest : public RibbonTest {
  protected:
    std::u16string NameFor(const std::string& add_in) {
        app.addInName.Assign(add_in);
        app.functions.Clear();
        CXlFunctionDescriptor& callback = app.functions.Add(SimpleFunction(u"RibbonCallback"));
        CXlEventArgs args;
        registrar.Notify(args);
        return callback.functionName;
    }

    CRibbonEventRegistrar registrar;
};

TEST_F(RegistrarTest, the_add_ins_name_is_a_prefix_of_the_macros_name) {
    EXPECT_EQ(NameFor("Metrify"), u"Metrify.RibbonCallback");
}

TEST_F(RegistrarTest, a_blank_in_the_add_ins_name_becomes_an_underscore) {
    EXPECT_EQ(NameFor("My Add in"), u"My_Add_in.RibbonCallback");
}

TEST_F(RegistrarTest, letters_digits_underscores_and_dots_stay_and_all_else_becomes_an_underscore) {
    EXPECT_EQ(NameFor("aZ09_.x-y(z)!"), u"aZ09_.x_y_z__.RibbonCallback");
}

TEST_F(RegistrarTest, other_functions_keep_their_names) {
    CXlFunctionDescriptor& other = app.functions.Add(SimpleFunction(u"Other"));
    CXlEventArgs args;
    registrar.Notify(args);
    EXPECT_EQ(other.functionName, u"Other");
}

TEST_F(RegistrarTest, a_name_that_has_been_given_is_not_given_again) {
    NameFor("Metrify");
    CXlEventArgs args;
    registrar.Notify(args);
    EXPECT_EQ(app.functions.All()[0]->functionName, u"Metrify.RibbonCallback");
}

TEST_F(RegistrarTest, the_name_is_given_when_functions_are_registered) {
    app.functions.Add(SimpleFunction(u"RibbonCallback"));
    app.events.AttachEarly();
    OpenAddIn();
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"), Contains(HasSubstr("\"Recording.RibbonCallback\"")));
    app.events.DetachAll();
}

} // namespace
} // namespace metrify
