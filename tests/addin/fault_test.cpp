#include "addin/worksheet_function.h"
#include "tests/addin/plain_host.h"
#include "tests/intended_leaks.h"
#include "tests/xllrt/gate/scripted_host.h"
#include "xllrt/app/xll_exports.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

int METRIFY_HOST_CALL TouchNothing(int /*function*/, int /*count*/, XLOPER12* /*arguments*/[],
                                   XLOPER12* /*result*/) {
    // The compiler must not see that the pointer is invalid.
    static volatile std::uintptr_t address = 64;
    *reinterpret_cast<volatile int*>(address) = 1;
    return xlretSuccess;
}

int METRIFY_HOST_CALL DivideByNothing(int /*function*/, int /*count*/, XLOPER12* /*arguments*/[],
                                      XLOPER12* /*result*/) {
    static volatile int nothing = 0;
    static volatile int quotient = 1;
    quotient = quotient / nothing;
    return xlretSuccess;
}

Excel12Entry FindTouchNothing() {
    return TouchNothing;
}

Excel12Entry FindDivideByNothing() {
    return DivideByNothing;
}

std::string Called() {
    XLOPER12* record = Metrify_12(3.5, u"ft", u"m");
    std::string text = Rendered(*record);
    xlAutoFree12(record);
    return text;
}

std::string CalledNarrow() {
    XLOPER* record = Metrify_4(3.5, "ft", "m");
    std::string text = Rendered(*record);
    xlAutoFree(record);
    return text;
}

TEST(Fault, an_access_violation_in_the_called_code_becomes_the_cells_text) {
    {
        const PlainHost host(FindTouchNothing);
        const IntendedLeaks leaks;
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000005\"");
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000005\"") << "and again";
    }
    const PlainHost host;
    EXPECT_EQ(Called(), "{1.0668,\"m\n\n\"}") << "the process lives";
}

TEST(Fault, an_integer_division_by_zero_in_the_called_code_becomes_the_cells_text) {
    {
        const PlainHost host(FindDivideByNothing);
        const IntendedLeaks leaks;
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000094\"");
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000094\"") << "and again";
    }
    const PlainHost host;
    EXPECT_EQ(Called(), "{1.0668,\"m\n\n\"}") << "the process lives";
}

TEST(Fault, becomes_the_cells_text_through_the_narrow_entry_too) {
    {
        const PlainHost host(FindTouchNothing);
        const IntendedLeaks leaks;
        EXPECT_EQ(CalledNarrow(), "\"#ERROR: 'C' exception 0xC0000005\"");
    }
    {
        const PlainHost host(FindDivideByNothing);
        const IntendedLeaks leaks;
        EXPECT_EQ(CalledNarrow(), "\"#ERROR: 'C' exception 0xC0000094\"");
    }
    const PlainHost host;
    EXPECT_EQ(CalledNarrow(), "{1.0668,\"m\n\n\"}") << "the process lives";
}

} // namespace
