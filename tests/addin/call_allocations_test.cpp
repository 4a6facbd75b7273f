// What a whole call of the worksheet function allocates: its result, and nothing else.

#include "addin/worksheet_function.h"
#include "tests/allocations.h"
#include "tests/testing.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/thread_state.h"

#include <gtest/gtest.h>
#include <span>
#include <vector>

namespace {

using namespace metrify;

int METRIFY_HOST_CALL AnswerRelease(int /*function*/, int /*count*/, XLOPER12** /*arguments*/,
                                    XLOPER12* result) {
    if (result) {
        result->xltype = xltypeNum;
        result->val.num = 14.0;
    }
    return xlretSuccess;
}

class CallAllocations : public testing::Test {
  protected:
    void SetUp() override {
        if (is_sanitized)
            GTEST_SKIP() << "the allocator is another one";
        ASSERT_TRUE(AllocateThreadStates());
        ConnectHost({nullptr, nullptr, [] { return &AnswerRelease; }});
        SetHostVersion(14);
    }
    void TearDown() override { ConnectHost({}); }

    // Those of a call of the host with numbers.
    static std::size_t OfCall(std::size_t count) {
        const std::vector<CXlOper> numbers(count, CXlOper(1.0));
        CXlOper result;
        const std::size_t before = test::allocations();
        EXPECT_EQ(CallArray12(result, xlfInfo, std::span<const CXlOper>(numbers)), xlretSuccess);
        return test::allocations() - before;
    }
    static std::size_t OfConversion(const XCHAR* in_units, const XCHAR* out_units) {
        const std::size_t before = test::allocations();
        XLOPER12* const result = Metrify_12(3.5, in_units, out_units);
        const std::size_t after = test::allocations();
        EXPECT_EQ(result->val.array.lparray[0].xltype, xltypeNum);
        xlAutoFree12(result);
        return after - before;
    }
};

TEST_F(CallAllocations, of_a_host_call_with_up_to_thirty_arguments_are_none) {
    EXPECT_EQ(OfCall(1), 0U);
    EXPECT_EQ(OfCall(30), 0U);
    EXPECT_GT(OfCall(31), 0U);
}
TEST_F(CallAllocations, of_a_repeated_conversion_are_the_cells_and_their_text) {
    for (int run = 0; run < 2; ++run) {
        const std::size_t simple = OfConversion(u"ft", u"m");
        const std::size_t compound = OfConversion(u"kg m^2 / s^3 degK", u"BTU ft^1 / hr ft degR");
        if (run > 0) {
            EXPECT_EQ(simple, 2U);
            EXPECT_EQ(compound, 2U);
        }
    }
}

} // namespace
