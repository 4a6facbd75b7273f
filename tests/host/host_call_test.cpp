// Rules for all calls of the host.

#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

constexpr int kNoSuchFunction = 3999;
constexpr double kVersionItem = 2.0;

TEST(host_call, an_unknown_function_is_refused) {
    Host host(15);
    EXPECT_EQ(Ask12(host, kNoSuchFunction), Refusal(xlretInvXlfn));
}

TEST(host_call, too_few_arguments_are_refused) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace), Refusal(xlretInvCount));
}

TEST(host_call, too_many_arguments_are_refused) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {1.0, 2.0}), Refusal(xlretInvCount));
}

TEST(host_call, the_narrow_family_takes_30_arguments) {
    Host host(15);
    Adopt(host, {});
    std::vector<CellValue> arguments(30, CellValue(u""));
    EXPECT_EQ(Ask4(host, xlfRegister, arguments), Success(CellError{xlerrValue}));
    arguments.emplace_back(u"");
    EXPECT_EQ(Ask4(host, xlfRegister, arguments), Refusal(xlretInvCount));
}

TEST(host_call, the_wide_family_takes_255_arguments) {
    Host host(15);
    Adopt(host, {});
    std::vector<CellValue> arguments(255, CellValue(u""));
    EXPECT_EQ(Ask12(host, xlfRegister, arguments), Success(CellError{xlerrValue}));
    arguments.emplace_back(u"");
    EXPECT_EQ(Ask12(host, xlfRegister, arguments), Refusal(xlretInvCount));
}

TEST(host_call, a_negative_count_is_refused) {
    Host host(15);
    XLOPER12 result{};
    EXPECT_EQ(host.Call12(xlGetName, &result, -1, nullptr), xlretInvCount);
}

TEST(host_call, a_null_argument_is_refused) {
    Host host(15);
    XLOPER12 result{};
    XLOPER12* null = nullptr;
    EXPECT_EQ(host.Call12(xlfInfo, &result, 1, &null), xlretInvXloper);
}

TEST(host_call, a_record_of_no_type_is_refused) {
    Host host(15);
    XLOPER12 result{};
    XLOPER12 untyped{};
    XLOPER12* argument = &untyped;
    EXPECT_EQ(host.Call12(xlfInfo, &result, 1, &argument), xlretInvXloper);
}

TEST(host_call, a_macro_flow_value_is_refused) {
    Host host(15);
    XLOPER12 result{};
    XLOPER12 flow{};
    flow.xltype = xltypeFlow;
    XLOPER12* argument = &flow;
    EXPECT_EQ(host.Call12(xlfInfo, &result, 1, &argument), xlretInvXloper);
}

TEST(host_call, hosts_before_version_12_have_no_wide_entry) {
    Host host(11);
    XLOPER12 result{};
    EXPECT_EQ(host.Call12(xlGetHwnd, &result, 0, nullptr), xlretFailed);
}

TEST(host_call, later_hosts_answer_both_families) {
    Host host(12);
    EXPECT_EQ(Ask4(host, xlfGetWorkspace, {kVersionItem}), Success(u"12.0"));
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {kVersionItem}), Success(u"12.0"));
}

TEST(host_call, options_in_the_number_are_ignored) {
    Host host(14);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace | xlIntl, {kVersionItem}), Success(u"14.0"));
}

TEST(host_call, the_result_may_be_null) {
    Host host(15);
    XLOPER12 item{};
    WriteRecord(kVersionItem, item);
    XLOPER12* argument = &item;
    EXPECT_EQ(host.Call12(xlfGetWorkspace, nullptr, 1, &argument), xlretSuccess);
    EXPECT_EQ(host.state().ledger.Counts().handed_out, 0U);
}

TEST(host_call, a_refused_call_does_not_change_the_result) {
    Host host(15);
    XLOPER12 result{};
    WriteRecord(3.5, result);
    EXPECT_EQ(host.Call12(kNoSuchFunction, &result, 0, nullptr), xlretInvXlfn);
    EXPECT_EQ(result.val.num, 3.5);
}

TEST(host_call, a_text_that_it_hands_out_is_owned_by_it_until_it_is_freed) {
    Host host(15);
    XLOPER12 item{};
    WriteRecord(kVersionItem, item);
    XLOPER12* argument = &item;
    XLOPER12 result{};
    ASSERT_EQ(host.Call12(xlfGetWorkspace, &result, 1, &argument), xlretSuccess);
    EXPECT_EQ(host.state().ledger.Counts().Outstanding(), 1U);
    XLOPER12* to_free = &result;
    EXPECT_EQ(host.Call12(xlFree, nullptr, 1, &to_free), xlretSuccess);
    EXPECT_EQ(host.state().ledger.Counts().Outstanding(), 0U);
}

TEST(host_call, xlFree_takes_several_records) {
    Host host(15);
    XLOPER12 item{};
    WriteRecord(kVersionItem, item);
    XLOPER12* argument = &item;
    XLOPER12 first{};
    XLOPER12 second{};
    host.Call12(xlfGetWorkspace, &first, 1, &argument);
    host.Call12(xlfGetWorkspace, &second, 1, &argument);
    XLOPER12* both[] = {&first, &second};
    EXPECT_EQ(host.Call12(xlFree, nullptr, 2, both), xlretSuccess);
    EXPECT_EQ(host.state().ledger.Counts().Outstanding(), 0U);
}

TEST(host_call, commands_may_call_every_function) {
    Host host(15);
    const ContextScope scope(CallContext::command);
    EXPECT_EQ(Ask12(host, xlcEcho, {false}), Success(true));
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {kVersionItem}), Success(u"15.0"));
}

TEST(host_call, worksheet_functions_may_not_run_commands) {
    Host host(15);
    const ContextScope scope(CallContext::worksheet_function);
    EXPECT_EQ(Ask12(host, xlcEcho, {false}), Refusal(xlretFailed));
    EXPECT_TRUE(host.state().echo);
}

TEST(host_call, worksheet_functions_may_not_call_functions_for_macro_sheets) {
    Host host(15);
    const ContextScope scope(CallContext::worksheet_function);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {kVersionItem}), Refusal(xlretInvXlfn));
    EXPECT_EQ(Ask12(host, xlfInfo, {u"release"}), Success(u"15.0"));
}

TEST(host_call, functions_registered_as_macros_may_call_functions_but_not_commands) {
    Host host(15);
    const ContextScope scope(CallContext::macro_function);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {kVersionItem}), Success(u"15.0"));
    EXPECT_EQ(Ask12(host, xlfSetName, {u"Name"}), Refusal(xlretInvXlfn));
    EXPECT_EQ(Ask12(host, xlcEcho, {false}), Refusal(xlretFailed));
}

TEST(host_call, calculation_threads_may_call_thread_safe_functions) {
    Host host(15);
    const ContextScope scope(CallContext::calculation_thread);
    EXPECT_EQ(Ask12(host, xlfInfo, {u"release"}), Success(u"15.0"));
    EXPECT_EQ(Ask12(host, xlCoerce, {u"12", 1.0}), Success(12.0));
    EXPECT_EQ(Ask12(host, xlfActiveCell), Refusal(kRetNotThreadSafe));
    EXPECT_EQ(Ask12(host, xlcEcho, {false}), Refusal(kRetNotThreadSafe));
}

TEST(host_call, the_log_holds_order_arguments_and_results) {
    Host host(15);
    host.state().log.Start();
    Ask12(host, xlfInfo, {u"release"});
    Ask4(host, kNoSuchFunction, {1.0});
    host.state().log.Stop();
    Ask12(host, xlfInfo, {u"release"});
    const std::vector<LoggedCall> expected{
        {xlfInfo, true, {u"release"}, xlretSuccess, u"15.0"},
        {xlFree, true, {}, xlretSuccess, {}},
        {kNoSuchFunction, false, {1.0}, xlretInvXlfn, {}},
    };
    EXPECT_EQ(host.state().log.Calls(), expected);
}

TEST(host_call, the_log_finds_the_calls_of_one_function) {
    Host host(15);
    host.state().log.Start();
    Ask12(host, xlfInfo, {u"release"});
    Ask12(host, xlfGetWorkspace | xlIntl, {kVersionItem});
    const std::vector<LoggedCall> calls = host.state().log.CallsOf(xlfGetWorkspace);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls.front().function, xlfGetWorkspace | xlIntl);
}

TEST(host_call, the_newest_host_is_the_one_that_is_reached) {
    Host outer(11);
    {
        const Host inner(15);
        EXPECT_EQ(Host::Current(), &inner);
    }
    EXPECT_EQ(Host::Current(), &outer);
}

} // namespace
} // namespace metrify::host
