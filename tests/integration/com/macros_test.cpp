// Macros, properties and addresses by automation.

#include "integration/application/com_holder.h"
#include "tests/integration/integration_host.h"

namespace metrify::host {
namespace {

// The state that the macro of the test saw.
struct Seen {
    IntegrationHost* host = nullptr;
    int runs = 0;
    bool alerts = true;
    double number = 0.0;
    std::u16string first;
    std::u16string second;
} seen;

std::int32_t METRIFY_HOST_CALL LookAround() {
    ++seen.runs;
    seen.alerts = seen.host->settings().displayAlerts;
    return 1;
}

XLOPER12* METRIFY_HOST_CALL TakeThree(double number, const XCHAR* first, const XCHAR* second) {
    seen.number = number;
    seen.first = first;
    seen.second = second;
    static XLOPER12 answer;
    answer.xltype = xltypeNum;
    answer.val.num = number + 1.0;
    return &answer;
}

class macros : public testing::Test {
  protected:
    static std::map<std::string, void*> Entries() {
        auto entries = AddInEntries();
        entries["LookAround"] = EntryOf(LookAround);
        entries["TakeThree"] = EntryOf(TakeThree);
        return entries;
    }

    macros() : host(16, Entries()) {
        seen = Seen();
        seen.host = &host;
        EXPECT_TRUE(connection.Init());
        RegisterEntry(host.host, u"LookAround", u"J", u"LookAround", 2.0);
        RegisterEntry(host.host, u"TakeThree", u"UBC%C%", u"TakeThree");
    }

    HRESULT RunText(std::u16string_view text) { return connection.com.RunMacroByText(text, answer); }
    HRESULT RunName(const std::vector<ComVariant>& arguments) {
        return connection.com.RunMacroByName(arguments, answer);
    }

    IntegrationHost host;
    CXllApp application;
    HostConnection connection;
    ComVariant answer;
};

TEST_F(macros, run_by_a_text) {
    EXPECT_EQ(RunText(u"TakeThree(5,\"a\",\"say \"\"b\"\"\")"), S_OK);
    EXPECT_EQ(seen.second, u"say \"b\"");
    ASSERT_EQ(answer.Type(), VT_R8);
    EXPECT_EQ(V_R8(&answer.Get()), 6.0);
}

TEST_F(macros, run_by_a_name_with_the_arguments_in_their_order) {
    EXPECT_EQ(
        RunName({ComVariant(u"TakeThree"), ComVariant(std::int32_t{5}), ComVariant(u"a"), ComVariant(u"b")}),
        S_OK);
    EXPECT_EQ(seen.number, 5.0);
    EXPECT_EQ(seen.first, u"a");
    EXPECT_EQ(seen.second, u"b");
    ASSERT_EQ(answer.Type(), VT_R8);
    EXPECT_EQ(V_R8(&answer.Get()), 6.0);
}

TEST_F(macros, that_fail_give_the_code_of_the_host) {
    EXPECT_EQ(RunText(u"NoSuchMacro()"), DISP_E_EXCEPTION);
    EXPECT_EQ(RunName({ComVariant(u"NoSuchMacro")}), DISP_E_EXCEPTION);
}

TEST_F(macros, run_with_the_alerts_off_and_on_again_afterwards) {
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
    seen.alerts = true;
    EXPECT_EQ(RunName({ComVariant(u"LookAround")}), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
    EXPECT_EQ(seen.runs, 2);
}

TEST_F(macros, that_fail_leave_the_alerts_on) {
    EXPECT_TRUE(FAILED(RunText(u"NoSuchMacro()")));
    EXPECT_TRUE(host.settings().displayAlerts);
}

TEST_F(macros, do_not_change_alerts_that_are_off) {
    host.settings().displayAlerts = false;
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_FALSE(host.settings().displayAlerts);
}

TEST_F(macros, read_the_setting_of_the_alerts_also_from_a_number) {
    host.settings().areAlertsANumber = true;
    EXPECT_EQ(RunText(u"LookAround()"), S_OK);
    EXPECT_FALSE(seen.alerts);
    EXPECT_TRUE(host.settings().displayAlerts);
}

TEST_F(macros, need_a_host) {
    EXPECT_TRUE(connection.com.Shutdown(connection.failure));
    EXPECT_EQ(RunText(u"LookAround()"), E_POINTER);
    EXPECT_EQ(RunName({ComVariant(u"LookAround")}), E_POINTER);
}

// ---- Properties

TEST_F(macros, active_worksheet_is_that_of_the_host) {
    const ComVariant sheet = host.Sheet();
    host.settings().activeWorksheet = sheet.Object();
    ComPtr<IDispatch> active;
    EXPECT_EQ(connection.com.ActiveWorksheet(active), S_OK);
    EXPECT_EQ(active.Get(), sheet.Object().Get());
}

TEST_F(macros, active_worksheet_has_another_name_in_some_hosts) {
    const ComVariant sheet = host.Sheet();
    host.settings().activeWorksheet = sheet.Object();
    host.settings().knowsActiveWorksheet = false;
    ComPtr<IDispatch> active;
    EXPECT_EQ(connection.com.ActiveWorksheet(active), S_OK);
    EXPECT_EQ(active.Get(), sheet.Object().Get());
}

TEST_F(macros, names_are_those_of_workbook_and_worksheet) {
    std::u16string name;
    EXPECT_EQ(ObjectName(host.Workbook().Object().Get(), name), S_OK);
    EXPECT_EQ(name, u"Book1");
    EXPECT_EQ(ObjectName(host.Sheet().Object().Get(), name), S_OK);
    EXPECT_EQ(name, u"Sheet1");
}

// ---- Addresses

TEST_F(macros, range_address_is_plain) {
    std::u16string text;
    EXPECT_EQ(RangeAddress(host.Range().Object().Get(), text, false), S_OK);
    EXPECT_EQ(text, u"$A$1");
}

TEST_F(macros, range_address_has_workbook_and_sheet_in_front) {
    std::u16string text;
    EXPECT_EQ(RangeAddress(host.Range().Object().Get(), text, true), S_OK);
    EXPECT_EQ(text, u"[Book1]Sheet1!$A$1");
}

TEST_F(macros, range_address_is_completed_if_the_host_omits_workbook_and_sheet) {
    const auto range =
        host.automation.MakeRange(host.automation.MakeWorksheet(u"My Book", u"My Sheet"), {u"$B$2", u"$B$2"});
    std::u16string text;
    EXPECT_EQ(RangeAddress(range.Get(), text, true), S_OK);
    EXPECT_EQ(text, u"[My Book]My Sheet!$B$2");
}

TEST_F(macros, range_address_of_something_else_leaves_the_text) {
    std::u16string text = u"as it was";
    EXPECT_EQ(RangeAddress(host.Workbook().Object().Get(), text, true), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(text, u"as it was");
}

// ---- As the application uses it

class com_holder : public testing::Test {
  protected:
    com_holder() : host(16) { EXPECT_TRUE(holder.Start(failure)); }

    IntegrationHost host;
    CXllApp application;
    CXlComHolder holder;
    XlComFailure failure;
};

TEST_F(com_holder, describes_workbooks_sheets_and_ranges) {
    std::u16string name;
    std::u16string book;
    EXPECT_TRUE(holder.DescribeWorkbook(AsHostObject(host.Workbook().Object().Get()), name));
    EXPECT_EQ(name, u"Book1");
    EXPECT_TRUE(holder.DescribeSheet(AsHostObject(host.Sheet().Object().Get()), book, name));
    EXPECT_EQ(book, u"Book1");
    EXPECT_EQ(name, u"Sheet1");
    EXPECT_TRUE(holder.DescribeRange(AsHostObject(host.Range().Object().Get()), name));
    EXPECT_EQ(name, u"$A$1");
}

TEST_F(com_holder, does_not_change_texts_for_what_it_cannot_describe) {
    std::u16string name = u"as it was";
    std::u16string book = u"as it was";
    const ComVariant range = host.Range();
    EXPECT_FALSE(holder.DescribeWorkbook(AsHostObject(range.Object().Get()), name));
    EXPECT_FALSE(holder.DescribeSheet(AsHostObject(range.Object().Get()), book, name));
    EXPECT_FALSE(holder.DescribeRange(AsHostObject(host.Workbook().Object().Get()), name));
    EXPECT_FALSE(holder.DescribeWorkbook(nullptr, name));
    EXPECT_FALSE(holder.DescribeSheet(nullptr, book, name));
    EXPECT_FALSE(holder.DescribeRange(nullptr, name));
    EXPECT_EQ(name, u"as it was");
    EXPECT_EQ(book, u"as it was");
}

TEST_F(com_holder, does_not_change_the_answer_if_a_macro_fails) {
    CXlOper answer(4.0);
    const XlComValue values[] = {std::u16string(u"NoSuchMacro")};
    EXPECT_FALSE(holder.Run(values, answer));
    EXPECT_FALSE(holder.RunText(u"NoSuchMacro()", answer));
    EXPECT_EQ(answer.ToNumber(), 4.0);
}

TEST_F(com_holder, reports_why_it_cannot_start) {
    CXlComHolder second;
    EXPECT_FALSE(second.Start(failure));
    EXPECT_EQ(failure.text, u"An instance of CXllCom has already been created");
    EXPECT_EQ(failure.code, 1U);
}

TEST_F(macros, run_for_the_application_by_an_array_or_a_text) {
    EXPECT_TRUE(connection.com.Shutdown(connection.failure));
    CXlComHolder holder;
    XlComFailure failure;
    CXllApp another;
    ASSERT_TRUE(holder.Start(failure));
    CXlOper result;
    const XlComValue values[] = {std::u16string(u"TakeThree"), std::int32_t{5}, std::u16string(u"a"), {}};
    EXPECT_TRUE(holder.Run(values, result));
    EXPECT_EQ(seen.first, u"a");
    EXPECT_EQ(seen.second, u"");
    EXPECT_EQ(result.ToNumber(), 6.0);
    EXPECT_TRUE(holder.RunText(u"LookAround()", result));
    EXPECT_EQ(seen.runs, 1);
    EXPECT_EQ(result.ToNumber(), 1.0);
}

} // namespace
} // namespace metrify::host
