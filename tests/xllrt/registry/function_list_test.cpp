#include "xllrt/registry/function_list.h"
#include "xllrt/text/ascii_case.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

XlFunctionRecord WideRecord() {
    return {.narrow = {.entry = "F_4", .type = "RB"},
            .wide = {.entry = "F_12",
                     .type = "UB",
                     .argumentNames = u"Länge",
                     .category = u"Maße",
                     .description = u"für alle",
                     .argumentHelp = u"erste\0zweite\0"},
            .functionName = u"F",
            .macroType = 2,
            .spareText = "spare",
            .helpId = 4,
            .helpTopic = u"topic",
            .signature = u"{F}",
            .minimumVersion = 12,
            .maximumVersion = 15};
}

TEST(FunctionDescriptor, takes_over_what_the_record_says) {
    const CXlFunctionDescriptor descriptor(WideRecord());
    EXPECT_EQ(descriptor.narrow.entry, "F_4");
    EXPECT_EQ(descriptor.wide.entry, "F_12");
    EXPECT_EQ(descriptor.narrow.type, "RB");
    EXPECT_EQ(descriptor.wide.type, "UB");
    EXPECT_EQ(descriptor.functionName, u"F");
    EXPECT_EQ(descriptor.wide.argumentNames, u"Länge");
    EXPECT_EQ(descriptor.macroType, 2);
    EXPECT_EQ(descriptor.wide.category, u"Maße");
    EXPECT_EQ(descriptor.spareText, "") << "stays empty";
    EXPECT_EQ(descriptor.helpId, 4);
    EXPECT_EQ(descriptor.helpTopic, u"topic");
    EXPECT_EQ(descriptor.wide.description, u"für alle");
    EXPECT_THAT(descriptor.wide.argumentHelp, ElementsAre(u"erste", u"zweite"));
    EXPECT_EQ(descriptor.signature, u"{F}");
    EXPECT_EQ(descriptor.minimumVersion, 12);
    EXPECT_EQ(descriptor.maximumVersion, 15);
    EXPECT_EQ(descriptor.registerId, 0.0);
    EXPECT_EQ(descriptor.registered, 0);
}

TEST(FunctionDescriptor, missing_narrow_texts_are_made_from_the_wide_ones) {
    const CXlFunctionDescriptor descriptor(WideRecord());
    EXPECT_EQ(descriptor.narrow.argumentNames, "L\xE4nge");
    EXPECT_EQ(descriptor.narrow.category, "Ma\xDF"
                                          "e");
    EXPECT_EQ(descriptor.narrow.description, "f\xFCr alle");
    EXPECT_THAT(descriptor.narrow.argumentHelp, ElementsAre("erste", "zweite"));
}

TEST(FunctionDescriptor, narrow_texts_that_are_there_stay) {
    XlFunctionRecord record = WideRecord();
    record.narrow.argumentNames = "names";
    record.narrow.category = "category";
    record.narrow.description = "description";
    record.narrow.argumentHelp = "one\0";
    const CXlFunctionDescriptor descriptor(record);
    EXPECT_EQ(descriptor.narrow.argumentNames, "names");
    EXPECT_EQ(descriptor.narrow.category, "category");
    EXPECT_EQ(descriptor.narrow.description, "description");
    EXPECT_THAT(descriptor.narrow.argumentHelp, ElementsAre("one"));
}

TEST(FunctionDescriptor, null_texts_become_empty) {
    const CXlFunctionDescriptor descriptor{XlFunctionRecord()};
    EXPECT_EQ(descriptor.narrow.entry, "");
    EXPECT_EQ(descriptor.functionName, u"");
    EXPECT_EQ(descriptor.narrow.category, "");
    EXPECT_THAT(descriptor.wide.argumentHelp, IsEmpty());
    EXPECT_EQ(descriptor.macroType, 1);
}

TEST(FunctionDescriptor, a_macro_type_of_3_or_more_is_read_as_1) {
    EXPECT_EQ(CXlFunctionDescriptor(XlFunctionRecord{.macroType = 3}).macroType, 1);
    EXPECT_EQ(CXlFunctionDescriptor(XlFunctionRecord{.macroType = 9}).macroType, 1);
    EXPECT_EQ(CXlFunctionDescriptor(XlFunctionRecord{.macroType = 2}).macroType, 2);
}

TEST(FunctionList, descriptors_are_built_in_reverse_order_of_linking) {
    static XlFunctionRecord first{.functionName = u"linked first"};
    static XlFunctionRecord second{.functionName = u"linked second"};
    [[maybe_unused]] static const bool linked = (LinkFunctionRecord(first), LinkFunctionRecord(second), true);
    int count = 0;
    for (const XlFunctionRecord* record = FirstFunctionRecord(); record; record = record->next)
        ++count;
    CXlFunctionList functions;
    EXPECT_EQ(functions.BuildDescriptors(), count);
    EXPECT_EQ(functions.All()[0]->functionName, u"linked second");
    EXPECT_EQ(functions.All()[1]->functionName, u"linked first");
}

TEST(FunctionList, functions_are_found_by_name_with_case_ignored) {
    CXlFunctionList functions;
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = u"Metrify";
    const CXlFunctionDescriptor& added = functions.Add(descriptor);
    functions.Add(descriptor);
    EXPECT_EQ(functions.FindFunction(u"mETRIFY"), &added) << "the first of the name";
    EXPECT_EQ(functions.FindFunction("METRIFY"), &added);
    EXPECT_EQ(functions.FindFunction(u"Metrif"), nullptr);
    EXPECT_EQ(functions.FindFunction(u"Metrify2"), nullptr);
}

TEST(FunctionList, case_is_ignored_in_the_letters_from_a_to_z_and_in_nothing_else) {
    EXPECT_EQ(CompareIgnoringCase(u"AMZ", u"amz"), 0);
    EXPECT_EQ(CompareIgnoringCase(u"amz", u"AMZ"), 0);
    EXPECT_NE(CompareIgnoringCase(u"@", u"`"), 0);
    EXPECT_NE(CompareIgnoringCase(u"[", u"{"), 0);
    EXPECT_LT(CompareIgnoringCase(u"A", u"b"), 0);
    EXPECT_GT(CompareIgnoringCase(u"b", u"A"), 0);
    EXPECT_LT(CompareIgnoringCase(u"A", u"ab"), 0);
    EXPECT_GT(CompareIgnoringCase(u"ab", u"A"), 0);
}

TEST(FunctionList, a_function_that_is_taken_out_is_not_deleted) {
    CXlFunctionList functions;
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = u"Func";
    const CXlFunctionDescriptor& first = functions.Add(descriptor);
    const CXlFunctionDescriptor& second = functions.Add(descriptor);
    functions.RemoveFunction(u"FUNC");
    EXPECT_THAT(functions.All(), ElementsAre(&second));
    EXPECT_EQ(first.functionName, u"Func");
    functions.RemoveFunction(u"none");
    EXPECT_EQ(functions.All().size(), 1U);
}

TEST(FunctionList, clearing_forgets_what_the_host_made_of_the_functions) {
    CXlFunctionList functions;
    CXlFunctionDescriptor& descriptor = functions.Add(CXlFunctionDescriptor());
    descriptor.registerId = 4.0;
    descriptor.registered = 1;
    functions.Clear();
    EXPECT_THAT(functions.All(), IsEmpty());
    EXPECT_EQ(descriptor.registerId, 0.0);
    EXPECT_EQ(descriptor.registered, 0);
}

} // namespace
