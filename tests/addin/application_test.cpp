#include "addin/application.h"
#include "addin/function_records.h"
#include "tests/xllrt/add_in_fixture.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::Contains;
using testing::ElementsAre;

const CXlFunctionRecordLink link(metrify_record);

class Application : public AddInTest {};

TEST_F(Application, is_named_metrify_and_knows_its_function_from_attach_on) {
    CMetrifyApp app;
    EXPECT_EQ(app.functions.FindFunction(u"Metrify"), nullptr);
    EXPECT_EQ(app.OnProcessAttach(), 1);
    EXPECT_STREQ(app.addInName.Narrow(), "Metrify");
    EXPECT_EQ(app.GetAddInName(), u"Metrify");
    EXPECT_NE(app.functions.FindFunction(u"Metrify"), nullptr);
}

TEST_F(Application, the_worksheet_functions_record_is_this) {
    const CXlFunctionDescriptor descriptor(metrify_record);
    EXPECT_EQ(descriptor.narrowEntry, "Metrify_4");
    EXPECT_EQ(descriptor.wideEntry, "Metrify_12");
    EXPECT_EQ(descriptor.narrowType, "RBCC");
    EXPECT_EQ(descriptor.wideType, "UBC%C%$");
    EXPECT_EQ(descriptor.functionName, u"Metrify");
    EXPECT_EQ(descriptor.wideArgumentNames, u"Val,InUnits,OutUnits");
    EXPECT_EQ(descriptor.narrowArgumentNames, "Val,InUnits,OutUnits");
    EXPECT_EQ(descriptor.macroType, 1);
    EXPECT_EQ(descriptor.wideCategory, u"Metrify");
    EXPECT_EQ(descriptor.wideDescription, u"Converts Val from InUnits to OutUnits");
    EXPECT_THAT(descriptor.wideArgumentHelp,
                ElementsAre(u"Input value expressed in InUnits to be converted to Outunits (number)",
                            u"Units of the input value (text)", u"Units to convert input value to (text)"));
    EXPECT_EQ(descriptor.helpId, 0);
    EXPECT_EQ(descriptor.helpTopic, u"");
    EXPECT_EQ(descriptor.minimumVersion, 0);
    EXPECT_EQ(descriptor.maximumVersion, 0);
    EXPECT_EQ(
        descriptor.signature,
        u"{Metrify,,,Converts Val from InUnits to OutUnits,Metrify,1,1,U,{{0,{Val,Double,0,,Input value "
        u"expressed in InUnits to be converted to Outunits (number),,,,}},{0,{InUnits,String,0,,Units of "
        u"the input value (text),,,,}},{0,{OutUnits,String,0,,Units to convert input value to "
        u"(text),,,,}}},{},3,,0,0,,,,0,0}");
}

TEST_F(Application, a_wide_host_is_told_of_the_function_like_this) {
    CMetrifyApp app;
    app.OnProcessAttach();
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_THAT(
        host.TakeCalls(),
        Contains("12 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"Metrify_12\", \"UBC%C%$\", \"Metrify\", "
                 "\"Val,InUnits,OutUnits\", \"1\", \"Metrify\", \"\", \"C:\\Addins\\Metrify.chm!1001\", "
                 "\"Converts Val from InUnits to OutUnits\", "
                 "\"Input value expressed in InUnits to be converted to Outunits (number)\", "
                 "\"Units of the input value (text)\", \"Units to convert input value to (text)..\")"));
}

TEST_F(Application, a_narrow_host_is_told_of_its_narrow_entry) {
    host.version = u"11.0";
    CMetrifyApp app;
    app.OnProcessAttach();
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_THAT(
        host.TakeCalls(),
        Contains("4 xlfRegister(\"C:\\Addins\\Metrify.xll\", \"Metrify_4\", \"RBCC\", \"Metrify\", "
                 "\"Val,InUnits,OutUnits\", \"1\", \"Metrify\", \"\", \"C:\\Addins\\Metrify.chm!1001\", "
                 "\"Converts Val from InUnits to OutUnits\", "
                 "\"Input value expressed in InUnits to be converted to Outunits (number)\", "
                 "\"Units of the input value (text)\", \"Units to convert input value to (text)..\")"));
}

} // namespace
