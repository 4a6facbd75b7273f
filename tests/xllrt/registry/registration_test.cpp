#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/app/app_registration.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class RegistrationTest : public AddInTest {
  protected:
    // Sets the host's major version as detection does.
    void SetVersion(int version) { SetHostVersion(version); }

    bool Register() { return RegisterAll(app); }

    RecordingApp app{host};
};

TEST_F(RegistrationTest, a_function_is_registered_with_all_its_values) {
    SetVersion(14);
    app.helpFile = "Metrify.chm";
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    EXPECT_TRUE(Register());
    EXPECT_THAT(
        host.TakeCalls(),
        ElementsAre("12 xlGetName()",
                    "12 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"Entry12\", \"UB\", \"Func\", \"Val\", "
                    "\"1\", \"Category\", \"\", \"Metrify.chm!1001\", \"Describes\", \"The value..\")"));
    EXPECT_EQ(descriptor.registerId, 1.0);
    EXPECT_EQ(descriptor.registered, 1);
}

TEST_F(RegistrationTest, a_narrow_host_gets_the_narrow_texts) {
    SetVersion(11);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.narrow.argumentNames = "NarrowVal";
    descriptor.narrow.category = "14";
    descriptor.narrow.description = "Narrow";
    descriptor.narrow.argumentHelp = {"Narrow help."};
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("4 xlGetName()",
                            "4 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"Entry4\", \"RB\", \"Func\", "
                            "\"NarrowVal\", \"1\", 14i, \"\", \"!1001\", \"Narrow\", \"Narrow help..\")"));
}

TEST_F(RegistrationTest, without_functions_registration_succeeds) {
    SetVersion(14);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlGetName()"));
}

// ---- Which family

TEST_F(RegistrationTest, a_function_with_narrow_texts_only_is_registered_narrow_on_any_host) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.entry.clear();
    descriptor.wide.type.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("4 xlfRegister(")));
}

TEST_F(RegistrationTest, narrow_argument_names_without_wide_ones_are_registered_narrow) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentNames.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("4 xlfRegister(")));
}

TEST_F(RegistrationTest, without_any_argument_names_registration_is_wide) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentNames.clear();
    descriptor.narrow.argumentNames.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("12 xlfRegister(")));
}

TEST_F(RegistrationTest, without_a_narrow_type_registration_is_wide) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentNames.clear();
    descriptor.narrow.type.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("12 xlfRegister(")));
}

TEST_F(RegistrationTest, a_wide_function_on_a_narrow_host_counts_as_handled_without_a_call) {
    SetVersion(11);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.narrow.entry.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Not(Contains(HasSubstr("xlfRegister"))));
}

TEST_F(RegistrationTest, a_narrow_host_skips_a_function_without_narrow_names_that_has_wide_ones) {
    SetVersion(11);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.narrow.argumentNames.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Not(Contains(HasSubstr("xlfRegister"))));
}

TEST_F(RegistrationTest, without_a_wide_type_registration_is_narrow) {
    SetVersion(14);
    for (const char* narrow_names : {"Val", ""}) {
        CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
        descriptor.wide.type.clear();
        descriptor.narrow.argumentNames = narrow_names;
        app.functions.Add(descriptor);
        EXPECT_TRUE(Register());
        EXPECT_THAT(host.TakeCallsOf("xlfRegister"), ElementsAre(HasSubstr("4 xlfRegister(")));
        app.functions.Clear();
    }
}

TEST_F(RegistrationTest, without_any_argument_names_a_narrow_host_gets_a_narrow_registration) {
    SetVersion(11);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentNames.clear();
    descriptor.narrow.argumentNames.clear();
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"), ElementsAre(HasSubstr("4 xlfRegister(")));
}

TEST_F(RegistrationTest, without_a_type_of_its_family_a_function_counts_as_handled_without_a_call) {
    CXlFunctionDescriptor wide = SimpleFunction(u"Wide");
    wide.narrow.type.clear();
    CXlFunctionDescriptor none = SimpleFunction(u"None");
    none.narrow.type.clear();
    none.wide.type.clear();
    app.functions.Add(wide);
    app.functions.Add(none);
    SetVersion(11);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"), IsEmpty());
    SetVersion(14);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"), ElementsAre(HasSubstr("\"Wide\"")));
}

// ---- Versions

TEST_F(RegistrationTest, a_minimum_version_above_the_hosts_counts_as_handled_without_a_call) {
    SetVersion(12);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.minimumVersion = 14;
    CXlFunctionDescriptor& added = app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Not(Contains(HasSubstr("xlfRegister"))));
    EXPECT_EQ(added.registered, 0);
}

TEST_F(RegistrationTest, a_maximum_version_below_the_hosts_counts_as_handled_without_a_call) {
    SetVersion(15);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.maximumVersion = 14;
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Not(Contains(HasSubstr("xlfRegister"))));
}

TEST_F(RegistrationTest, a_host_on_the_bounds_is_within_them) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.minimumVersion = 14;
    descriptor.maximumVersion = 14;
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("xlfRegister")));
}

// ---- What the host answers

TEST_F(RegistrationTest, a_failing_code_is_a_failure) {
    SetVersion(14);
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    host.On(xlfRegister, Reply::Refused());
    EXPECT_FALSE(Register());
    EXPECT_EQ(descriptor.registered, 0);
}

TEST_F(RegistrationTest, a_failing_code_keeps_an_earlier_id) {
    SetVersion(14);
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    descriptor.registerId = 8.0;
    host.On(xlfRegister, Reply::Refused());
    EXPECT_TRUE(Register());
    EXPECT_EQ(descriptor.registerId, 8.0);
    EXPECT_EQ(descriptor.registered, 1);
}

TEST_F(RegistrationTest, an_error_value_is_the_id_0) {
    SetVersion(14);
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    descriptor.registerId = 8.0;
    host.On(xlfRegister, Reply{0, Reply::Error{xlerrValue}});
    EXPECT_FALSE(Register());
    EXPECT_EQ(descriptor.registerId, 0.0);
    EXPECT_EQ(descriptor.registered, 0);
}

TEST_F(RegistrationTest, one_failure_does_not_prevent_the_others) {
    SetVersion(14);
    app.functions.Add(SimpleFunction(u"Bad"));
    CXlFunctionDescriptor& good = app.functions.Add(SimpleFunction(u"Good"));
    host.On(xlfRegister, [](const std::vector<std::string>& arguments) {
        return arguments.at(3) == "\"Bad\"" ? Reply::Refused() : Reply{0, 3.0};
    });
    EXPECT_FALSE(Register());
    EXPECT_EQ(good.registerId, 3.0);
}

TEST_F(RegistrationTest, observers_may_add_functions_before_anything_is_registered) {
    class Adding final : public CXlStaticEventObserver<CXlEventArgs> {
      public:
        explicit Adding(CXllApp& app)
            : CXlStaticEventObserver(CXlRegisterFunctionsEvent::Chain()), app_(app) {}
        void Notify(CXlEventArgs& /*args*/) override { app_.functions.Add(SimpleFunction(u"Late")); }

      private:
        CXllApp& app_;
    };
    SetVersion(14);
    const Adding observer(app);
    app.events.AttachEarly();
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("\"Late\"")));
    EXPECT_EQ(app.helpIds.at(u"Late"), 1001);
    app.events.DetachAll();
}

TEST_F(RegistrationTest, a_function_that_is_added_later_is_registered_alone_without_observers) {
    SetVersion(14);
    app.functions.Add(SimpleFunction(u"Earlier"));
    EXPECT_TRUE(Register());
    host.TakeCalls();
    CXlFunctionDescriptor& late = app.functions.Add(SimpleFunction(u"Late"));
    EXPECT_TRUE(RegisterFunction(app, late));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlGetName()", HasSubstr("\"Late\"")));
    EXPECT_EQ(late.registered, 1);
    host.On(xlfRegister, Reply::Refused());
    CXlFunctionDescriptor& refused = app.functions.Add(SimpleFunction(u"Refused"));
    EXPECT_FALSE(RegisterFunction(app, refused));
    EXPECT_EQ(refused.registered, 0);
}

TEST_F(RegistrationTest, a_short_registration_is_for_functions_without_arguments) {
    SetVersion(14);
    app.shortRegistration = true;
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.type = "U$";
    descriptor.wide.argumentHelp.clear();
    app.functions.Add(descriptor);
    app.functions.Add(SimpleFunction(u"Other"));
    EXPECT_TRUE(Register());
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"),
                ElementsAre("12 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"Entry12\", \"U$\", \"Func\", "
                            "\"Val\", \"1\", \"Category\", \"\")",
                            HasSubstr("\"Describes\", \"The value..\")")));
}

TEST_F(RegistrationTest, a_short_registration_counts_the_arguments_of_its_own_family) {
    app.shortRegistration = true;
    CXlFunctionDescriptor narrow = SimpleFunction(u"Narrow");
    narrow.narrow.type = "R";
    CXlFunctionDescriptor wide = SimpleFunction(u"Wide");
    wide.wide.type = "U$";
    app.functions.Add(narrow);
    app.functions.Add(wide);
    const auto values = [](const std::string& call) { return std::count(call.begin(), call.end(), ',') + 1; };
    SetVersion(14);
    EXPECT_TRUE(Register());
    std::vector<std::string> calls = host.TakeCallsOf("xlfRegister");
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(values(calls[0]), 11);
    EXPECT_EQ(values(calls[1]), 8);
    SetVersion(11);
    EXPECT_TRUE(Register());
    calls = host.TakeCallsOf("xlfRegister");
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(values(calls[0]), 8);
    EXPECT_EQ(values(calls[1]), 11);
}

TEST_F(RegistrationTest, twenty_five_help_texts_result_in_thirty_narrow_values) {
    SetVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.entry.clear();
    descriptor.narrow.argumentHelp.assign(25, "help");
    app.functions.Add(descriptor);
    EXPECT_TRUE(Register());
    const std::string call = host.TakeCallsOf("xlfRegister").at(0);
    EXPECT_THAT(call, testing::StartsWith("4 "));
    EXPECT_EQ(std::count(call.begin(), call.end(), ','), 29);
    EXPECT_THAT(call, testing::EndsWith("\"help\", \"help..\")"));
}

// ---- The question

TEST_F(RegistrationTest, the_question_names_what_failed_in_the_hosts_window) {
    SetVersion(14);
    host.On(xlGetHwnd, Reply{0, std::int32_t{0x1234}});
    app.functions.Add(SimpleFunction(u"One"));
    app.functions.Add(SimpleFunction(u"Fine")).registered = 1;
    app.functions.Add(SimpleFunction(u"Two"));
    EXPECT_FALSE(app.ConfirmRegistrationFailure());
    EXPECT_THAT(
        host.TakeCalls(),
        ElementsAre("4 xlGetHwnd()", "find window XLMAIN 4660",
                    AllOf(HasSubstr("ask Add-in Load Failure: The following functions in Recording failed "
                                    "to register:\n"),
                          HasSubstr("\nOne\nTwo\n\nDo you wish to continue loading the add-in?"))));
    host.says_yes = true;
    EXPECT_TRUE(app.ConfirmRegistrationFailure());
}

TEST_F(RegistrationTest, the_user_is_not_asked_if_nothing_failed) {
    SetVersion(14);
    app.functions.Add(SimpleFunction(u"Fine")).registered = 1;
    EXPECT_TRUE(app.ConfirmRegistrationFailure());
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(RegistrationTest, functions_skipped_by_version_are_named_only_if_others_failed) {
    SetVersion(12);
    CXlFunctionDescriptor late = SimpleFunction(u"Late");
    late.minimumVersion = 14;
    app.functions.Add(late);
    EXPECT_TRUE(Register());
    app.functions.Add(SimpleFunction(u"Bad"));
    host.On(xlfRegister, Reply::Refused());
    EXPECT_FALSE(Register());
    app.ConfirmRegistrationFailure();
    EXPECT_THAT(host.TakeCalls(), Contains(HasSubstr("\nLate\nBad\n")));
}

} // namespace
