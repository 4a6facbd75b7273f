#include "xllrt/registry/function_list.h"
#include "xllrt/registry/help_ids.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

CXlFunctionDescriptor Named(const std::u16string& name, std::uint16_t id = 0) {
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = name;
    descriptor.helpId = id;
    return descriptor;
}

CXlHelpIds Assigned(std::initializer_list<CXlFunctionDescriptor> descriptors) {
    CXlFunctionList functions;
    for (const CXlFunctionDescriptor& descriptor : descriptors)
        functions.Add(descriptor);
    return AssignHelpIds(functions.All());
}

TEST(HelpIds, functions_without_ids_are_numbered_in_the_order_of_their_names) {
    const CXlHelpIds ids = Assigned({Named(u"beta"), Named(u"Alpha")});
    EXPECT_EQ(ids.at(u"Alpha"), 1001);
    EXPECT_EQ(ids.at(u"beta"), 1002);
}

TEST(HelpIds, a_specified_id_is_kept_and_numbering_continues_after_it) {
    const CXlHelpIds ids = Assigned({Named(u"a"), Named(u"z", 1010), Named(u"y", 7)});
    EXPECT_EQ(ids.at(u"y"), 7);
    EXPECT_EQ(ids.at(u"z"), 1010);
    EXPECT_EQ(ids.at(u"a"), 1011);
}

TEST(HelpIds, an_id_equal_to_the_next_one_increases_the_next_one) {
    const CXlHelpIds ids = Assigned({Named(u"a"), Named(u"z", 1001)});
    EXPECT_EQ(ids.at(u"a"), 1002);
}

TEST(HelpIds, the_asynchronous_form_shares_the_id) {
    const CXlHelpIds ids = Assigned({Named(u"FuncAsync"), Named(u"Func"), Named(u"Other")});
    EXPECT_EQ(ids.at(u"Func"), 1001);
    EXPECT_EQ(ids.at(u"FuncAsync"), 1001);
    EXPECT_EQ(ids.at(u"Other"), 1002);
}

TEST(HelpIds, the_asynchronous_form_of_no_function_has_a_separate_id) {
    const CXlHelpIds ids = Assigned({Named(u"FuncAsync"), Named(u"Async")});
    EXPECT_EQ(ids.at(u"Async"), 1001);
    EXPECT_EQ(ids.at(u"FuncAsync"), 1002);
}

TEST(HelpIds, another_ending_of_that_length_does_not_share_the_id) {
    const CXlHelpIds ids = Assigned({Named(u"Func"), Named(u"FuncOther")});
    EXPECT_EQ(ids.at(u"Func"), 1001);
    EXPECT_EQ(ids.at(u"FuncOther"), 1002);
}

TEST(HelpIds, a_name_that_is_only_the_ending_is_not_an_asynchronous_form) {
    const CXlHelpIds ids = Assigned({Named(u""), Named(u"Async")});
    EXPECT_EQ(ids.at(u""), 1001);
    EXPECT_EQ(ids.at(u"Async"), 1002);
}

TEST(HelpIds, numbers_wrap_at_16_bits) {
    const CXlHelpIds ids = Assigned({Named(u"a"), Named(u"b"), Named(u"z", 65535)});
    EXPECT_EQ(ids.at(u"a"), 0);
    EXPECT_EQ(ids.at(u"b"), 1);
}

TEST(HelpIds, the_help_argument_is_file_mark_and_automatic_number) {
    EXPECT_EQ(HelpText(Named(u"Func"), "My.chm", {{u"Func", std::uint16_t{1001}}}), u"My.chm!1001");
}

TEST(HelpIds, a_specified_id_takes_precedence_over_the_automatic_one) {
    EXPECT_EQ(HelpText(Named(u"Func", 12), "My.chm", {{u"Func", std::uint16_t{1001}}}), u"My.chm!12");
}

TEST(HelpIds, a_topic_takes_precedence_over_the_number) {
    CXlFunctionDescriptor descriptor = Named(u"Func", 12);
    descriptor.helpTopic = u"topic.htm";
    EXPECT_EQ(HelpText(descriptor, "My.chm", {}), u"My.chm!topic.htm");
}

TEST(HelpIds, a_topic_needs_no_number) {
    CXlFunctionDescriptor descriptor = Named(u"Func");
    descriptor.helpTopic = u"topic.htm";
    EXPECT_EQ(HelpText(descriptor, "", {}), u"!topic.htm");
}

TEST(HelpIds, without_topic_and_number_it_is_empty) {
    EXPECT_EQ(HelpText(Named(u"Func"), "My.chm", {}), u"");
}

} // namespace
