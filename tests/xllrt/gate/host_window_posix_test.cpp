// Windows of a host on a system without any.

#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/gate/host_window.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

class SystemWindowsOnPosix : public AddInTest {
  protected:
    SystemWindowsOnPosix() { SetHostVersion(14); }
};

TEST_F(SystemWindowsOnPosix, there_is_no_window_of_any_class) {
    EXPECT_EQ(SystemWindows().FindWindowOfClass("XLMAIN", 1), nullptr);
}

TEST_F(SystemWindowsOnPosix, a_question_is_an_alert_of_the_host_with_the_title_in_its_first_line) {
    host.On(xlcAlert, Reply{0, true});
    EXPECT_TRUE(SystemWindows().AskYesNo(nullptr, u"Continue?", u"Load Failure"));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlcAlert(\"Load Failure\nContinue?\", 1)"));
    host.On(xlcAlert, Reply{0, false});
    EXPECT_FALSE(SystemWindows().AskYesNo(nullptr, u"Continue?", u"Load Failure"));
}

} // namespace
