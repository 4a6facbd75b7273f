// The host's wide entry: how it is found, and what is passed through it.

#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"

#include <array>
#include <gmock/gmock.h>
#include <stdexcept>
#include <vector>

namespace {

using namespace metrify;
using testing::ElementsAre;

// Any function will do.
constexpr int kFunction = xlfGetCell;

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
    if (function == xlFree)
        return xlretSuccess;
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

    // A value with both records.
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

TEST_F(HostEntry, an_argument_of_the_right_family_is_passed_unchanged) {
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

TEST_F(HostEntry, an_exception_passes_and_leaves_the_result_unchanged) {
    Connect(FindTake, Throw4v);
    CXlOper argument;
    argument.SetText("to be converted");
    CXlOper result(2.5);
    EXPECT_THROW(Call4(result, kFunction, std::array<const CXlOper*, 1>{&argument}), std::runtime_error);
    EXPECT_EQ(result.ToNumber(true), 2.5);
}

TEST_F(HostEntry, without_an_entry_every_wide_call_is_32) {
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

TEST_F(HostEntry, the_entry_is_looked_up_before_the_count_is_tested) {
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
    for (std::size_t i = 0; i < arguments.size(); ++i)
        EXPECT_EQ(given.arguments[i], &arguments[i]) << i;
}

TEST_F(HostEntry, the_count_of_an_array_is_not_tested) {
    XLOPER12 record{};
    std::vector<XLOPER12*> arguments(256, &record);
    EXPECT_EQ(Excel12v(kFunction, &record, 256, arguments.data()), 0);
    EXPECT_EQ(given.count, 256);
}

TEST_F(HostEntry, an_entry_that_was_found_is_not_looked_up_again) {
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), 0);
    EXPECT_EQ(Excel12v(kFunction, &record, 0, nullptr), 0);
    EXPECT_EQ(lookups, 1);
}

TEST_F(HostEntry, while_there_is_no_entry_every_call_looks_it_up) {
    Connect(FindNothing);
    XLOPER12 record{};
    Excel12(kFunction, &record, 0);
    Excel12v(kFunction, &record, 0, nullptr);
    EXPECT_EQ(lookups, 2);
}

TEST_F(HostEntry, a_loader_may_set_the_entry_if_none_is_found) {
    Connect(FindNothing);
    SetExcel12EntryPt(Other12);
    EXPECT_EQ(lookups, 1);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), xlretAbort);
}

TEST_F(HostEntry, the_entry_that_was_found_takes_precedence_over_the_loaders) {
    SetExcel12EntryPt(Other12);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), 0);
    EXPECT_EQ(given.function, kFunction);
}

TEST_F(HostEntry, an_entry_that_was_set_is_never_replaced) {
    Connect(FindNothing);
    SetExcel12EntryPt(Other12);
    SetExcel12EntryPt(Take12);
    XLOPER12 record{};
    EXPECT_EQ(Excel12(kFunction, &record, 0), xlretAbort);
}

} // namespace
