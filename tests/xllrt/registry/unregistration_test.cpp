// Unregistering functions.

#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/app/app_registration.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::HasSubstr;

class UnregistrationTest : public AddInTest {
  protected:
    RecordingApp app{host};
};

TEST_F(UnregistrationTest, a_wide_function_is_unregistered_with_these_calls) {
    SetHostVersion(14);
    CXlFunctionDescriptor& descriptor = app.functions.Add(SimpleFunction(u"Func"));
    descriptor.registerId = 5.0;
    descriptor.registered = 1;
    UnregisterAll(app);
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlGetName()", "12 xlfUnregister(5)", "12 xlfSetName(\"Func\")",
                            "12 xlGetName()",
                            "12 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"xlAutoRemove\", \"J\", \"Func\", "
                            "missing, 0i)"));
    EXPECT_EQ(descriptor.registerId, 0.0);
    EXPECT_EQ(descriptor.registered, 0);
}

TEST_F(UnregistrationTest, a_name_is_hidden_with_the_known_path_if_the_host_does_not_report_it_again) {
    SetHostVersion(14);
    app.functions.Add(SimpleFunction(u"Func"));
    int asked = 0;
    host.On(xlGetName, [&asked](const std::vector<std::string>& /*arguments*/) {
        return ++asked == 1 ? Reply{0, u"first path"} : Reply::Refused();
    });
    UnregisterAll(app);
    EXPECT_THAT(
        host.TakeCallsOf("xlfRegister"),
        ElementsAre("12 xlfRegister(\"first path\", \"xlAutoRemove\", \"J\", \"Func\", missing, 0i)"));
    EXPECT_EQ(asked, 2);
}

TEST_F(UnregistrationTest, a_name_is_hidden_with_the_path_that_the_host_reports_again) {
    SetHostVersion(14);
    app.functions.Add(SimpleFunction(u"Func"));
    int asked = 0;
    host.On(xlGetName, [&asked](const std::vector<std::string>& /*arguments*/) {
        return Reply{0, ++asked == 1 ? u"first path" : u"second path"};
    });
    UnregisterAll(app);
    EXPECT_THAT(host.TakeCallsOf("xlfRegister"), ElementsAre(HasSubstr("xlfRegister(\"second path\", ")));
}

TEST_F(UnregistrationTest, a_narrow_function_is_unregistered_narrow_on_any_host) {
    SetHostVersion(14);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.entry.clear();
    descriptor.registerId = 5.0;
    app.functions.Add(descriptor);
    UnregisterAll(app);
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("12 xlGetName()", "4 xlfUnregister(5)", "4 xlfSetName(\"Func\")",
                            "12 xlGetName()",
                            "4 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"xlAutoRemove\", \"J\", \"Func\", "
                            "missing, 0i)"));
}

TEST_F(UnregistrationTest, a_refused_function_is_not_unregistered_but_its_name_is_removed) {
    SetHostVersion(14);
    app.functions.Add(SimpleFunction(u"Refused"));
    UnregisterAll(app);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlGetName()", "12 xlfSetName(\"Refused\")",
                                              "12 xlGetName()", HasSubstr("12 xlfRegister(")));
}

TEST_F(UnregistrationTest, unregistration_ignores_versions_and_codes) {
    SetHostVersion(12);
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.minimumVersion = 14;
    app.functions.Add(descriptor);
    app.functions.Add(SimpleFunction(u"Other"));
    host.On(xlfSetName, Reply::Refused());
    host.On(xlfRegister, Reply::Refused());
    UnregisterAll(app);
    EXPECT_THAT(host.TakeCallsOf("xlfSetName"),
                ElementsAre("12 xlfSetName(\"Func\")", "12 xlfSetName(\"Other\")"));
}

} // namespace
