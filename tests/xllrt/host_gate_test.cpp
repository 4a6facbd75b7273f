#include "scripted_host.h"
#include "xllrt/host_gate.h"
#include "xllrt/host_version.h"

#include <array>
#include <cstdarg>
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

// Any function will do.
constexpr int kFunction = xlfGetCell;

constexpr int kReturnCodes[] = {xlretAbort,     xlretInvXlfn, xlretInvCount, xlretInvXloper,
                                xlretStackOvfl, xlretFailed,  xlretUncalced};

// ---- Calls

class HostGate : public testing::Test {
  protected:
    explicit HostGate(int version = 14) { SetHostVersion(version); }

    // Values as a host of the one kind or the other has them built.
    template <class Value>
    static CXlOper Built(int version, Value value) {
        const int now = HostVersion();
        SetHostVersion(version);
        CXlOper built;
        if constexpr (std::is_same_v<Value, double>) {
            built.SetNumber(value);
        } else {
            built.SetText(value);
        }
        SetHostVersion(now);
        return built;
    }
    template <class Value>
    static CXlOper Narrow(Value value) {
        return Built(11, value);
    }
    template <class Value>
    static CXlOper Wide(Value value) {
        return Built(14, value);
    }

    static std::vector<const CXlOper*> Times(std::size_t count, const CXlOper& value) {
        return std::vector<const CXlOper*>(count, &value);
    }

    ScriptedHost host;
};

TEST_F(HostGate, below_version_12_a_call_is_narrow_and_the_host_owns_the_result) {
    SetHostVersion(11);
    CXlOper result;
    EXPECT_EQ(Call(result, kFunction), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell()"));
}

TEST_F(HostGate, from_version_12_on_a_call_is_wide_and_the_host_owns_the_result) {
    SetHostVersion(12);
    CXlOper result;
    EXPECT_EQ(Call(result, kFunction), 0);
    EXPECT_EQ(result.State(), 96);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell()"));
}

TEST_F(HostGate, before_detection_a_call_is_narrow) {
    SetHostVersion(0);
    CXlOper result;
    EXPECT_EQ(CallNoArgs(result, kFunction), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell()"));
}

TEST_F(HostGate, a_text_of_the_host_goes_back_to_it) {
    for (const int version : {11, 14}) {
        SetHostVersion(version);
        host.On(kFunction, Reply{0, u"text"});
        CXlOper result;
        EXPECT_EQ(CallNoArgs(result, kFunction), 0);
        EXPECT_EQ(result.ToText(true), "text");
    }
    // The host checks at its end that all came back.
}

TEST_F(HostGate, a_discarded_result_goes_back_at_once) {
    host.On(kFunction, Reply{0, u"text"});
    EXPECT_EQ(CallDiscard(kFunction, CXlOper(2.5)), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell(2.5)"));
}

TEST_F(HostGate, mode_0_is_narrow_on_a_wide_host) {
    CXlOper result;
    EXPECT_EQ(CallArray(result, CallMode::narrow, kFunction, Times(1, Narrow(2.5))), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell(2.5)"));
}

TEST_F(HostGate, mode_1_is_wide) {
    CXlOper result;
    EXPECT_EQ(CallArray(result, CallMode::wide, kFunction, {}), 0);
    EXPECT_EQ(result.State(), 96);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell()"));
}

TEST_F(HostGate, mode_1_is_256_below_version_12) {
    SetHostVersion(11);
    CXlOper result(2.5);
    EXPECT_EQ(CallArray(result, CallMode::wide, kFunction, {}), 256);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, mode_2_follows_the_host) {
    CXlOper result;
    EXPECT_EQ(CallArray(result, CallMode::by_host_flag, kFunction, {}), 0);
    SetHostVersion(11);
    EXPECT_EQ(CallArray(result, CallMode::by_host_flag, kFunction, {}), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell()", "4 xlfGetCell()"));
}

TEST_F(HostGate, the_wide_call_takes_pointers_and_values) {
    const std::array<CXlOper, 2> values = {CXlOper(1.0), CXlOper(2.0)};
    const std::array<const CXlOper*, 2> pointers = {&values[1], &values[0]};
    CXlOper result;
    EXPECT_EQ(CallArray12(result, kFunction, values), 0);
    EXPECT_EQ(CallArray12(result, kFunction, pointers), 0);
    EXPECT_EQ(result.State(), 96);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell(1, 2)", "12 xlfGetCell(2, 1)"));
}

TEST_F(HostGate, the_wide_call_is_256_below_version_12) {
    SetHostVersion(11);
    const std::array<CXlOper, 1> values = {CXlOper(1.0)};
    CXlOper result;
    EXPECT_EQ(CallArray12(result, kFunction, values), 256);
    EXPECT_EQ(CallArray12(result, kFunction, Times(1, values[0])), 256);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, the_narrow_call_takes_pointers_and_values_on_any_host) {
    const std::array<CXlOper, 2> values = {CXlOper(1.0), CXlOper(2.0)};
    const std::array<const CXlOper*, 2> pointers = {&values[1], &values[0]};
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, values), 0);
    EXPECT_EQ(Call4(result, kFunction, pointers), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell(1, 2)", "4 xlfGetCell(2, 1)"));
}

int CallWithList(CXlOper* result, int count, ...) {
    std::va_list list;
    va_start(list, count);
    const int code = CallVa(*result, kFunction, count, list);
    va_end(list);
    return code;
}

TEST_F(HostGate, a_variable_list_holds_pointers) {
    const CXlOper first(1.0);
    const CXlOper second(2.0);
    CXlOper result;
    EXPECT_EQ(CallWithList(&result, 2, &first, &second), 0);
    EXPECT_EQ(CallWithList(&result, 0), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell(1, 2)", "12 xlfGetCell()"));
}

// ---- Counts

TEST_F(HostGate, the_narrow_path_lets_30_arguments_through) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(30, Narrow(1.0))), 0);
    EXPECT_EQ(host.TakeCalls().size(), 1U);
}

TEST_F(HostGate, the_narrow_path_makes_no_call_with_31_arguments) {
    CXlOper result(2.5);
    EXPECT_EQ(Call4(result, kFunction, Times(31, Narrow(1.0))), 256);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, the_narrow_path_counts_before_it_looks_at_the_arguments) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(31, CXlOper())), 256);
}

TEST_F(HostGate, the_wide_path_lets_more_through) {
    CXlOper result;
    EXPECT_EQ(CallArray12(result, kFunction, Times(31, Wide(1.0))), 0);
    EXPECT_EQ(CallArray12(result, kFunction, Times(255, Wide(1.0))), 0);
    EXPECT_EQ(host.TakeCalls().size(), 2U);
}

// ---- Arguments

TEST_F(HostGate, a_narrow_argument_is_converted_for_a_wide_call) {
    CXlOper result;
    EXPECT_EQ(CallArray12(result, kFunction, Times(1, Narrow("caf\xE9"))), 0);
    EXPECT_EQ(CallArray12(result, kFunction, Times(1, Narrow(2.5))), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetCell(\"caf\xE9\")", "12 xlfGetCell(2.5)"));
}

TEST_F(HostGate, a_wide_argument_is_converted_for_a_narrow_call) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(1, Wide(u"caf\u00E9"))), 0);
    EXPECT_EQ(Call4(result, kFunction, Times(1, Wide(2.5))), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell(\"caf\xE9\")", "4 xlfGetCell(2.5)"));
}

TEST_F(HostGate, a_wide_text_of_255_units_goes_the_narrow_way) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(1, Wide(std::u16string(255, u'a')))), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell(\"" + std::string(255, 'a') + "\")"));
}

TEST_F(HostGate, a_wide_text_of_256_units_does_not) {
    // The one before it has been converted by then.
    const std::array<CXlOper, 2> values = {Wide(u"short"), Wide(std::u16string(256, u'a'))};
    CXlOper result(2.5);
    EXPECT_EQ(Call4(result, kFunction, values), 256);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, a_wide_array_of_257_columns_does_not) {
    CXlOper array;
    ASSERT_TRUE(array.MakeArray(1, 257));
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(1, array)), 256);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, an_argument_without_value_is_8_in_both_families) {
    const std::array<CXlOper, 2> values = {CXlOper(1.0), CXlOper()};
    CXlOper result(2.5);
    EXPECT_EQ(CallArray12(result, kFunction, values), 8);
    EXPECT_EQ(Call4(result, kFunction, values), 8);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_EQ(result.State(), CXlOper::kValid12);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, the_first_bad_argument_settles_the_code) {
    const CXlOper nothing;
    const CXlOper too_long = Wide(std::u16string(256, u'a'));
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, std::array{&nothing, &too_long}), 8);
    EXPECT_EQ(Call4(result, kFunction, std::array{&too_long, &nothing}), 256);
}

// ---- Results

TEST_F(HostGate, the_result_may_be_an_argument) {
    for (const int version : {11, 14}) {
        SetHostVersion(version);
        host.On(kFunction, Reply{0, u"first"});
        CXlOper value;
        EXPECT_EQ(CallNoArgs(value, kFunction), 0);
        host.TakeCalls();
        host.On(kFunction, Reply{0, u"second"});
        EXPECT_EQ(Call(value, kFunction, value), 0);
        const std::string family = version == 11 ? "4" : "12";
        EXPECT_THAT(host.TakeCalls(), ElementsAre(family + " xlfGetCell(\"first\")"));
        EXPECT_EQ(value.ToText(true), "second");
    }
}

TEST_F(HostGate, every_failure_of_the_host_passes_and_leaves_the_result) {
    for (const int version : {11, 14}) {
        SetHostVersion(version);
        for (const int code : kReturnCodes) {
            host.On(kFunction, Reply::Refused(code));
            CXlOper result;
            result.SetText("earlier");
            EXPECT_EQ(CallNoArgs(result, kFunction), code);
            EXPECT_EQ(result.ToText(true), "earlier");
        }
    }
}

TEST_F(HostGate, the_result_takes_the_family_of_the_call) {
    CXlOper result = Wide("earlier");
    EXPECT_EQ(Call4(result, kFunction, OperPointers()), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_EQ(result.Record12()->xltype, 0U);
}

// ---- A host that shows what it was given

struct Given {
    int function = 0;
    int count = 0;
    std::vector<const void*> arguments;
    bool result_was_zero = false;
};

Given given;
int lookups = 0;

template <class Record>
int Take(int function, Record* result, int count, Record** arguments) {
    if (function == xlFree) {
        return xlretSuccess;
    }
    given.function = function;
    given.count = count;
    given.arguments.assign(arguments, arguments + count);
    given.result_was_zero = result->xltype == 0 && result->val.str == nullptr;
    result->xltype = xltypeNil;
    return xlretSuccess;
}

int METRIFY_HOST_CALL Take4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
    return Take(function, result, count, arguments);
}

int METRIFY_HOST_CALL Take12(int function, int count, XLOPER12* arguments[], XLOPER12* result) {
    return Take(function, result, count, arguments);
}

int METRIFY_HOST_CALL Other12(int /*function*/, int /*count*/, XLOPER12* /*arguments*/[],
                              XLOPER12* /*result*/) {
    return xlretAbort;
}

int METRIFY_HOST_CALL Throw4v(int /*function*/, XLOPER* /*result*/, int /*count*/, XLOPER* /*arguments*/[]) {
    throw std::runtime_error("no host");
}

int Nothing4(int /*function*/, XLOPER* /*result*/, int /*count*/, ...) {
    return xlretSuccess;
}

Excel12Entry FindTake() {
    ++lookups;
    return Take12;
}

Excel12Entry FindNothing() {
    ++lookups;
    return nullptr;
}

class HostEntry : public testing::Test {
  protected:
    HostEntry() {
        given = {};
        lookups = 0;
        Connect(FindTake);
    }
    ~HostEntry() override { ConnectHost({}); }

    static void Connect(Excel12Entry (*find)(), Excel4vFunction excel4v = Take4v) {
        ConnectHost({.excel4 = Nothing4, .excel4v = excel4v, .find_entry = find});
        SetHostVersion(14);
    }

    // One value with both sides.
    static CXlOper BothSides() {
        XLOPER narrow{};
        narrow.xltype = xltypeNum;
        XLOPER12 wide{};
        wide.xltype = xltypeNum;
        CXlOper value = CXlOper::Wrap4(&narrow);
        value.CopyFrom(CXlOper::Wrap12(&wide));
        return value;
    }
};

TEST_F(HostEntry, an_argument_of_the_right_family_goes_as_it_is) {
    const CXlOper value = BothSides();
    CXlOper result;
    EXPECT_EQ(CallArray12(result, kFunction, std::array{&value}), 0);
    EXPECT_THAT(given.arguments, ElementsAre(value.Record12()));
    EXPECT_EQ(Call4(result, kFunction, std::array{&value}), 0);
    EXPECT_THAT(given.arguments, ElementsAre(value.Record4()));
}

TEST_F(HostEntry, the_result_record_is_zeroed_first) {
    CXlOper result(2.5);
    EXPECT_EQ(CallArray12(result, kFunction, OperPointers()), 0);
    EXPECT_TRUE(given.result_was_zero);
    given = {};
    EXPECT_EQ(Call4(result, kFunction, OperPointers()), 0);
    EXPECT_TRUE(given.result_was_zero);
}

TEST_F(HostEntry, the_function_number_arrives_with_its_options) {
    CXlOper result;
    EXPECT_EQ(CallNoArgs(result, xlfGetWorkspace | xlIntl), 0);
    EXPECT_EQ(given.function, 0x20BA);
}

TEST_F(HostEntry, an_exception_passes_and_leaves_the_result) {
    Connect(FindTake, Throw4v);
    CXlOper argument;
    argument.SetText("to be converted");
    CXlOper result(2.5);
    EXPECT_THROW(Call4(result, kFunction, std::array<const CXlOper*, 1>{&argument}), std::runtime_error);
    EXPECT_EQ(result.ToNumber(true), 2.5);
}

TEST_F(HostEntry, without_one_every_wide_call_is_32) {
    Connect(FindNothing);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), 32);
    EXPECT_EQ(Excel12v(kFunction, &record, 0, nullptr), 32);
    CXlOper result(2.5);
    EXPECT_EQ(Call(result, kFunction), 32);
    EXPECT_EQ(CallNoArgs(result, kFunction), 32);
    EXPECT_EQ(CallDiscard(kFunction), 32);
    EXPECT_EQ(CallArray(result, CallMode::wide, kFunction, {}), 32);
    EXPECT_EQ(CallArray12(result, kFunction, OperPointers()), 32);
    EXPECT_EQ(result.ToNumber(true), 2.5);
}

TEST_F(HostEntry, it_is_looked_up_before_the_count_is_tested) {
    Connect(FindNothing);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 256), 32);
}

TEST_F(HostEntry, more_than_255_arguments_are_4) {
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 256), 4);
    EXPECT_EQ(given.function, 0) << "no call was made";
}

TEST_F(HostEntry, a_negative_count_is_4) {
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, -1), 4);
    EXPECT_EQ(given.function, 0) << "no call was made";
}

template <std::size_t... Index>
int CallWithAll(XLOPER12* result, std::array<XLOPER12, sizeof...(Index)>& arguments,
                std::index_sequence<Index...> /*indices*/) {
    return Excel12(kFunction, result, static_cast<int>(sizeof...(Index)), &arguments[Index]...);
}

TEST_F(HostEntry, all_255_arguments_arrive_in_order) {
    XLOPER12 record{};
    std::array<XLOPER12, 255> arguments{};
    EXPECT_EQ(CallWithAll(&record, arguments, std::make_index_sequence<255>()), 0);
    EXPECT_EQ(given.function, kFunction);
    ASSERT_EQ(given.count, 255);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        EXPECT_EQ(given.arguments[i], &arguments[i]) << i;
    }
}

TEST_F(HostEntry, the_count_of_an_array_is_not_tested) {
    XLOPER12 record{};
    std::vector<XLOPER12*> arguments(256, &record);
    EXPECT_EQ(Excel12v(kFunction, &record, 256, arguments.data()), 0);
    EXPECT_EQ(given.count, 256);
}

TEST_F(HostEntry, once_found_it_is_not_looked_up_again) {
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), 0);
    EXPECT_EQ(Excel12v(kFunction, &record, 0, nullptr), 0);
    EXPECT_EQ(lookups, 1);
}

TEST_F(HostEntry, while_there_is_none_it_is_looked_up_by_every_call) {
    Connect(FindNothing);
    XLOPER12 record{};
    Excel12(kFunction, &record, 0);
    Excel12v(kFunction, &record, 0, nullptr);
    EXPECT_EQ(lookups, 2);
}

TEST_F(HostEntry, a_loader_may_name_one_where_none_is_found) {
    Connect(FindNothing);
    SetExcel12EntryPt(Other12);
    EXPECT_EQ(lookups, 1);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), xlretAbort);
}

TEST_F(HostEntry, the_one_found_goes_before_the_loaders) {
    SetExcel12EntryPt(Other12);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), 0);
    EXPECT_EQ(given.function, kFunction);
}

TEST_F(HostEntry, once_set_it_is_never_replaced) {
    Connect(FindNothing);
    SetExcel12EntryPt(Other12);
    SetExcel12EntryPt(Take12);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), xlretAbort);
}

// ---- The version

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

TEST_F(HostVersionTest, leaves_the_flag_below_12) {
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

TEST_F(HostVersionTest, is_0_if_the_host_does_not_tell_and_asked_for_again) {
    host.On(xlfGetWorkspace, Reply::Refused());
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 0);
    EXPECT_FALSE(HostFlag());
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetWorkspace|xlIntl(2i)"));
    host.On(xlfGetWorkspace, Reply{0, u"14.0"});
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 14);
}

TEST_F(HostVersionTest, is_0_if_its_text_cannot_be_coerced_and_the_text_goes_back) {
    host.On(xlCoerce, Reply::Refused(xlretUncalced));
    DetectHostVersion();
    EXPECT_EQ(HostVersion(), 0);
    EXPECT_FALSE(HostFlag());
    // The host checks at its end that the text came back.
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
