#include "scripted_host.h"
#include "xllrt/gate/host_version.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

class HostVersionTest : public testing::Test {
  protected:
    ScriptedHost host;
};

TEST_F(HostVersionTest, is_asked_for_through_the_narrow_primitive) {
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 14);
    EXPECT_TRUE(HostFlag());
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre("4 xlfGetWorkspace|xlIntl(2i)", "4 xlCoerce|xlIntl(\"14.0\", 2048i)"));
}

TEST_F(HostVersionTest, sets_the_flag_from_12_on) {
    host.version = u"12.0";
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 12);
    EXPECT_TRUE(HostFlag());
}

TEST_F(HostVersionTest, leaves_the_flag_false_below_12) {
    host.version = u"11.0";
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 11);
    EXPECT_FALSE(HostFlag());
}

TEST_F(HostVersionTest, is_unknown_before_detection) {
    EXPECT_EQ(HostVersion(), 0);
    EXPECT_FALSE(HostFlag());
}

TEST_F(HostVersionTest, once_known_is_not_asked_for_again) {
    DetectHostVersion();
    host.TakeCalls();
    host.version = u"11.0";
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 14);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostVersionTest, is_0_if_the_host_does_not_report_it_and_is_asked_for_again) {
    host.On(xlfGetWorkspace, Reply::Refused());
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 0);
    EXPECT_FALSE(HostFlag());
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetWorkspace|xlIntl(2i)"));
    host.On(xlfGetWorkspace, Reply{0, u"14.0"});
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 14);
}

TEST_F(HostVersionTest, is_0_if_its_text_cannot_be_coerced_and_the_text_is_returned) {
    host.On(xlCoerce, Reply::Refused(xlretUncalced));
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 0);
    EXPECT_FALSE(HostFlag());
    // The destructor of the host checks that the text was returned.
}

// ---- Numbers of functions

TEST(HostFunctions, have_the_published_numbers) {
    EXPECT_EQ(xlFree, 0x4000);
    EXPECT_EQ(xlCoerce, 0x4002);
    EXPECT_EQ(xlGetHwnd, 0x4008);
    EXPECT_EQ(xlGetName, 0x4009);
    EXPECT_EQ(xlfSetName, 88);
    EXPECT_EQ(xlfActiveCell, 94);
    EXPECT_EQ(xlfGetFormula, 106);
    EXPECT_EQ(xlfRegister, 149);
    EXPECT_EQ(xlfGetCell, 185);
    EXPECT_EQ(xlfGetWorkspace, 186);
    EXPECT_EQ(xlfUnregister, 201);
    EXPECT_EQ(xlfFormulaConvert, 241);
    EXPECT_EQ(xlcFormula, 0x8060);
    EXPECT_EQ(xlcFormulaArray, 0x8062);
    EXPECT_EQ(xlcAlert, 0x8076);
    EXPECT_EQ(xlIntl, 0x2000);
}

} // namespace
