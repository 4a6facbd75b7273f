// The end of a cell's calculation by the key of the host's user.

#include "addin/escape_key.h"
#include "addin/worksheet_function.h"
#include "base/thread_object.h"
#include "machine/calculator.h"
#include "tests/addin/stand_in_fixture.h"
#include "tests/expected_leaks.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "tests/xllrt/fault/faulting_code.h"
#include "xllrt/app/xll_exports.h"

#include <array>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using namespace metrify;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Takes several seconds, and a part of a second.
constexpr const XCHAR* kLong = u"* BesselJ(2000000000, 2000000001)";
constexpr const XCHAR* kQuarterSecond = u"* BesselJ(80000000, 80000001) * 0";

constexpr const char* kInterrupted = "{\"ERROR: interrupted.\n\n\",\"\"}";
constexpr const char* kConverted = "{1.0668,\"m\n\n\"}";

std::string Cells(double val, const XCHAR* in_units, const XCHAR* out_units) {
    XLOPER12* record = Metrify_12(val, in_units, out_units);
    std::string text = Rendered(*record);
    if ((record->xltype & xlbitDLLFree) != 0)
        xlAutoFree12(record);
    return text;
}

class Escape : public StandInTest {
  protected:
    std::size_t Questions() { return Host().log.CallsOf(xlAbort).size(); }
};

TEST_F(Escape, ends_a_long_cell_with_an_error) {
    Host().escape.PressAfter(milliseconds(200));
    EXPECT_EQ(Cells(1.0, kLong, u""), kInterrupted);
}

TEST_F(Escape, ends_a_long_cell_of_a_narrow_host) {
    Start(11);
    Host().escape.Press();
    XLOPER* record = Metrify_4(1.0, "* BesselJ(2000000000, 2000000001)", "");
    EXPECT_EQ(Rendered(*record), kInterrupted);
    xlAutoFree(record);
}

TEST_F(Escape, ends_a_search_in_a_block) {
    Host().escape.Press();
    // The first line has a result, and the listing the message of the last one.
    EXPECT_EQ(
        Cells(1.0, u"\nn = 10\nx = 3\nbegin\ny = BesselJ(n, x + n)\nend\nn = 200000000\nsolve(y, x)", u""),
        kInterrupted);
}

TEST_F(Escape, leaves_the_next_cell_right) {
    Host().escape.Press();
    EXPECT_EQ(Cells(1.0, u"\nx = 3\ny = BesselJ(2000000000, 2000000001)", u""), kInterrupted);
    EXPECT_EQ(Cells(3.5, u"ft", u"m"), kConverted);
    EXPECT_EQ(Cells(3.5, u"* x", u"m"), "{\"ERROR: 'x' undefined.\n\n\",\"\"}");
}

TEST_F(Escape, ends_the_cells_of_all_calculation_threads) {
    Host().escape.Press();
    Host().log.Start();
    std::array<std::string, 2> shown;
    {
        std::vector<std::jthread> threads;
        for (std::string& text : shown)
            threads.emplace_back([&text] {
                text = Cells(1.0, kLong, u"");
                DestroyThreadState();
            });
    }
    for (const std::string& text : shown)
        EXPECT_EQ(text, kInterrupted);
    EXPECT_EQ(Questions(), 2U);
}

TEST_F(Escape, stays_pending_for_the_host) {
    Host().escape.Press();
    EXPECT_EQ(Cells(1.0, kLong, u""), kInterrupted);
    EXPECT_TRUE(Host().escape.IsPressed());
}

// ---- The question

TEST_F(Escape, is_not_asked_for_by_short_cells) {
    Host().escape.Press();
    Host().log.Start();
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(Cells(3.5, u"ft", u"m"), kConverted);
        Cells(1.0, u"* BesselJ(100, 3)", u"");
        Cells(1.0, u"\nx = 1\nbegin\ny = x^2 - 2\nend\nsolve(y, x)", u"");
    }
    EXPECT_EQ(Questions(), 0U);
}

TEST_F(Escape, is_asked_for_every_50_milliseconds_at_most) {
    Host().escape.PressAfter(milliseconds(330));
    Host().log.Start();
    const auto begin = steady_clock::now();
    EXPECT_EQ(Cells(1.0, kLong, u""), kInterrupted);
    const auto lasted = std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
    EXPECT_GE(Questions(), 1U);
    EXPECT_LE(Questions(), static_cast<std::size_t>(lasted / milliseconds(50)));
}

TEST_F(Escape, is_asked_for_without_an_argument) {
    Host().escape.Press();
    Host().log.Start();
    Cells(1.0, kLong, u"");
    ASSERT_EQ(Questions(), 1U);
    EXPECT_TRUE(Host().log.CallsOf(xlAbort).front().arguments.empty());
    EXPECT_TRUE(Host().log.CallsOf(xlAbort).front().is_wide);
}

TEST_F(Escape, is_not_pressed_if_the_host_refuses_the_call) {
    Host().escape.Press();
    Host().faults.Refuse(xlAbort, xlretInvXlfn);
    Host().log.Start();
    EXPECT_EQ(Cells(1.0, kQuarterSecond, u""), "{0,\"\n\n\"}");
    EXPECT_GE(Questions(), 1U);
}

class EscapeAnswer : public AddInTest {};

TEST_F(EscapeAnswer, is_pressed_for_the_boolean_true_only) {
    EXPECT_TRUE(is_escape_pressed());
    for (const Reply& reply :
         {Reply{0, false}, Reply{0, 1.0}, Reply{0, std::int32_t{1}}, Reply{0, u"TRUE"}, Reply{0, {}},
          Reply{0, Reply::Error{xlerrValue}}, Reply{0, Reply::Items{1.0, 2.0}}, Reply::Refused(),
          Reply{xlretFailed, true}}) {
        host.On(xlAbort, reply);
        EXPECT_FALSE(is_escape_pressed()) << reply.value.index();
    }
}

TEST_F(EscapeAnswer, is_not_pressed_if_the_call_throws) {
    host.On(xlAbort, [](const std::vector<std::string>&) -> Reply {
        throw CXlRuntimeException(std::string("the host's entry failed"));
    });
    EXPECT_FALSE(is_escape_pressed());
}

TEST_F(EscapeAnswer, may_come_after_another_cell_of_the_same_thread) {
    SetHostVersion(14);
    const XCHAR* const search = u"\nn = 10\nx = 3\nbegin\ny = BesselJ(n, 80000001) + x\nend\n"
                                u"n = 80000000\nfunc(x, 2)";
    host.On(xlAbort, Reply{0, false});
    const std::string alone = Cells(1.0, search, u"");
    const XCHAR* const other = u"\nx = 4\nbegin\ny = x\nend\nsolve(y, x)";
    const std::string other_alone = Cells(1.0, other, u"");
    int asked = 0;
    host.On(xlAbort, [&](const std::vector<std::string>&) -> Reply {
        ++asked;
        EXPECT_EQ(Cells(3.5, u"ft", u"m; cm"), "{1.0668,\"m = 106.68 cm\n\n\"}");
        EXPECT_EQ(Cells(1.0, other, u""), other_alone);
        return {0, false};
    });
    EXPECT_EQ(Cells(1.0, search, u""), alone);
    EXPECT_GE(asked, 1);
}

TEST_F(EscapeAnswer, that_ends_in_a_fault_leaves_the_next_cell_right) {
    SetHostVersion(14);
    const ExpectedLeaks leaks; // a fault skips destructors
    host.On(xlAbort, [](const std::vector<std::string>&) -> Reply {
        faulting::TouchNothing();
        return {};
    });
    EXPECT_EQ(Cells(1.0, kLong, u""), "\"#ERROR: 'C' exception 0xC0000005\"");
    host.On(xlAbort, Reply{0, false});
    EXPECT_EQ(Cells(3.5, u"ft", u"m"), kConverted);
    EXPECT_EQ(&current_calculator(), &thread_object<calculator>())
        << "the calculator of the question is gone";
}

} // namespace
