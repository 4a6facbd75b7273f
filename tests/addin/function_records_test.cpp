#include "addin/function_records.h"
#include "xllrt/function_descriptor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

TEST(function_records, the_worksheet_function_is_described_like_this) {
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
}

TEST(function_records, the_worksheet_function_has_this_signature) {
    EXPECT_EQ(
        CXlFunctionDescriptor(metrify_record).signature,
        u"{Metrify,,,Converts Val from InUnits to OutUnits,Metrify,1,1,U,{{0,{Val,Double,0,,Input value "
        u"expressed in InUnits to be converted to Outunits (number),,,,}},{0,{InUnits,String,0,,Units of "
        u"the input value (text),,,,}},{0,{OutUnits,String,0,,Units to convert input value to "
        u"(text),,,,}}},{},3,,0,0,,,,0,0}");
}

} // namespace
