#include "scripted_host.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_version.h"

#include <array>
#include <cstdarg>
#include <gmock/gmock.h>
#include <string>
#include <type_traits>
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

    // Values as they are built for a narrow or for a wide host.
    template <class Value>
    static CXlOper Built(int version, Value value) {
        const int now = HostVersion();
        SetHostVersion(version);
        CXlOper built;
        if constexpr (std::is_same_v<Value, double>)
            built.SetNumber(value);
        else
            built.SetText(value);
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

TEST_F(HostGate, a_text_of_the_host_is_returned_to_it) {
    for (const int version : {11, 14}) {
        SetHostVersion(version);
        host.On(kFunction, Reply{0, u"text"});
        CXlOper result;
        EXPECT_EQ(CallNoArgs(result, kFunction), 0);
        EXPECT_EQ(result.ToText(true), "text");
    }
    // The destructor of the host checks that everything was returned.
}

TEST_F(HostGate, a_discarded_result_is_returned_at_once) {
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

TEST_F(HostGate, a_narrow_call_accepts_30_arguments) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(30, Narrow(1.0))), 0);
    EXPECT_EQ(host.TakeCalls().size(), 1U);
}

TEST_F(HostGate, a_narrow_call_with_31_arguments_is_not_made) {
    CXlOper result(2.5);
    EXPECT_EQ(Call4(result, kFunction, Times(31, Narrow(1.0))), 256);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, a_narrow_call_counts_its_arguments_before_it_reads_them) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(31, CXlOper())), 256);
}

TEST_F(HostGate, a_wide_call_accepts_more_arguments) {
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

TEST_F(HostGate, a_wide_text_of_255_units_can_be_passed_to_a_narrow_call) {
    CXlOper result;
    EXPECT_EQ(Call4(result, kFunction, Times(1, Wide(std::u16string(255, u'a')))), 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfGetCell(\"" + std::string(255, 'a') + "\")"));
}

TEST_F(HostGate, a_wide_text_of_256_units_cannot) {
    // The one before it has been converted by then.
    const std::array<CXlOper, 2> values = {Wide(u"short"), Wide(std::u16string(256, u'a'))};
    CXlOper result(2.5);
    EXPECT_EQ(Call4(result, kFunction, values), 256);
    EXPECT_EQ(result.ToNumber(true), 2.5);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostGate, a_wide_array_of_257_columns_cannot) {
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

TEST_F(HostGate, the_first_bad_argument_determines_the_code) {
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

TEST_F(HostGate, every_failure_of_the_host_is_returned_and_leaves_the_result_unchanged) {
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

TEST_F(HostGate, the_result_is_in_the_family_of_the_call) {
    CXlOper result = Wide("earlier");
    EXPECT_EQ(Call4(result, kFunction, OperPointers()), 0);
    EXPECT_EQ(result.State(), 6);
    EXPECT_EQ(result.Record12()->xltype, 0U);
}

} // namespace
