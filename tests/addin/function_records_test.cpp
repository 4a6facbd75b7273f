#include "addin/function_records.h"
#include "xllrt/registry/function_descriptor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(function_records, the_worksheet_function_is_described_like_this) {
    const CXlFunctionDescriptor descriptor(metrify_record);
    EXPECT_EQ(descriptor.narrow.entry, "Metrify_4");
    EXPECT_EQ(descriptor.wide.entry, "Metrify_12");
    EXPECT_EQ(descriptor.narrow.type, "RBCC");
    EXPECT_EQ(descriptor.wide.type, "UBC%C%$");
    EXPECT_EQ(descriptor.functionName, u"Metrify");
    EXPECT_EQ(descriptor.wide.argumentNames, u"Val,InUnits,OutUnits");
    EXPECT_EQ(descriptor.narrow.argumentNames, "Val,InUnits,OutUnits");
    EXPECT_EQ(descriptor.macroType, 1);
    EXPECT_EQ(descriptor.wide.category, u"Metrify");
    EXPECT_EQ(descriptor.wide.description, u"Converts Val from InUnits to OutUnits");
    EXPECT_THAT(descriptor.wide.argumentHelp,
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

TEST(function_records, the_macro_is_described_like_this) {
    const CXlFunctionDescriptor descriptor(macro_record);
    EXPECT_EQ(descriptor.narrow.entry, "Metrify_Macro_4");
    EXPECT_EQ(descriptor.wide.entry, "Metrify_Macro_12");
    EXPECT_EQ(descriptor.narrow.type, "R");
    EXPECT_EQ(descriptor.wide.type, "U$");
    EXPECT_EQ(descriptor.functionName, u"Metrify_Macro");
    EXPECT_EQ(descriptor.wide.argumentNames, u"");
    EXPECT_EQ(descriptor.narrow.argumentNames, "");
    EXPECT_EQ(descriptor.macroType, 2);
    EXPECT_EQ(descriptor.wide.category, u"14");
    EXPECT_EQ(descriptor.wide.description, u"Calls the Metrify() function.");
    EXPECT_THAT(descriptor.wide.argumentHelp, IsEmpty());
    EXPECT_THAT(descriptor.narrow.argumentHelp, IsEmpty());
    EXPECT_EQ(descriptor.helpId, 0);
    EXPECT_EQ(descriptor.helpTopic, u"");
    EXPECT_EQ(descriptor.minimumVersion, 0);
    EXPECT_EQ(descriptor.maximumVersion, 0);
}

TEST(function_records, the_macro_has_this_signature) {
    EXPECT_EQ(CXlFunctionDescriptor(macro_record).signature,
              u"{Metrify_Macro,,,Calls the Metrify() function.,14,2,1,U,{},{},3,,0,0,,,,0,0}");
}

TEST(function_records, the_ribbons_callback_is_described_like_this) {
    const CXlFunctionDescriptor descriptor(ribbon_record);
    EXPECT_EQ(descriptor.narrow.entry, "RibbonCallback_4");
    EXPECT_EQ(descriptor.wide.entry, "RibbonCallback_12");
    EXPECT_EQ(descriptor.narrow.type, "RJCCJCCA");
    EXPECT_EQ(descriptor.wide.type, "UJC%C%JC%C%A");
    EXPECT_EQ(descriptor.functionName, u"RibbonCallback");
    EXPECT_EQ(descriptor.wide.argumentNames, u"callback,id,tag,index,text,selectedId,pressed");
    EXPECT_EQ(descriptor.narrow.argumentNames, "callback,id,tag,index,text,selectedId,pressed");
    EXPECT_EQ(descriptor.macroType, 2);
    EXPECT_EQ(descriptor.wide.category, u"14");
    EXPECT_EQ(descriptor.helpId, 4);
    EXPECT_EQ(descriptor.helpTopic, u"");
    EXPECT_EQ(descriptor.wide.description, u"Handles all calls redirected from the ribbonX manager");
    EXPECT_THAT(descriptor.wide.argumentHelp,
                ElementsAre(u"is the identifier of the callback which invoked this function",
                            u"is the id attribute of the control raising the event",
                            u"is the tag attribute of the control raising the event",
                            u"is the index of an item", u"is the changed value of the text",
                            u"is the id of the selected item", u"is true if the toggleButton is pressed"));
    EXPECT_EQ(descriptor.minimumVersion, 0);
    EXPECT_EQ(descriptor.maximumVersion, 0);
}

TEST(function_records, the_ribbons_callback_has_this_signature) {
    EXPECT_EQ(
        CXlFunctionDescriptor(ribbon_record).signature,
        u"{RibbonCallback,,,Handles all calls redirected from the ribbonX manager,14,2,0,U,{{0,{callback,"
        u"Int,0,,is the identifier of the callback which invoked this function,,,,}},{0,{id,String,0,,is the "
        u"id attribute of the control raising the event,,,,}},{0,{tag,String,0,,is the tag attribute of the "
        u"control raising the event,,,,}},{0,{index,Int,0,,is the index of an item,,,,}},{0,{text,String,0,,"
        u"is the changed value of the text,,,,}},{0,{selectedId,String,0,,is the id of the selected "
        u"item,,,,}},{0,{pressed,Boolean,0,,is true if the toggleButton is pressed,,,,}}},{},3,,0,0,,,,0,0}");
}

} // namespace
