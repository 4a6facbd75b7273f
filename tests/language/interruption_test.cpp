// Runs that are ended while they compute.

#include "base/interruption.h"
#include "language/driver.h"
#include "language/session.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace {

using namespace metrify;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Takes several seconds.
constexpr const char* long_value = "BesselJ(2000000000, 2000000001)";

// Enters the line and interrupts it when it is certainly being computed.
std::string interrupted_listing(session& s, const std::string& line) {
    std::string shown;
    std::thread entering([&] { shown = s.enter(line); });
    std::this_thread::sleep_for(milliseconds(100));
    const steady_clock::time_point begin = steady_clock::now();
    s.stop().request();
    entering.join();
    EXPECT_LT(steady_clock::now() - begin, milliseconds(1000)) << line;
    return shown;
}

class interrupted_function : public testing::TestWithParam<const char*> {};

TEST_P(interrupted_function, ends_with_a_message) {
    session s;
    const std::string line = GetParam();
    EXPECT_EQ(interrupted_listing(s, line), "[  1 ] " + line + "\n       ERROR: interrupted.\n\n");
}

// One for each long loop.
INSTANTIATE_TEST_SUITE_P(functions, interrupted_function,
                         testing::Values("BesselJ(2000000000, 2000000001)", "BesselJ(2000000001, 2000000000)",
                                         "BesselY(2000000000, 2000000001)", "BesselI(2000000000, 2.857e15)"));

TEST(interruption, ends_a_line_of_many_functions) {
    session s;
    std::string line = "0";
    for (int i = 0; i < 20000; ++i)
        line += "+BesselJ(.5,9000)";
    EXPECT_EQ(interrupted_listing(s, line), "[  1 ] " + line + "\n       ERROR: interrupted.\n\n");
}

TEST(interruption, keeps_the_variables_as_they_were_before_the_statement) {
    session s;
    s.enter("x = 1 m");
    interrupted_listing(s, std::string("x = ") + long_value);
    EXPECT_EQ(s.enter("x"), "[  2 ] x\n        = 1 m\n\n");
    interrupted_listing(s, std::string("y = ") + long_value);
    EXPECT_EQ(s.enter("y"), "[  3 ] y\n       ERROR: 'y' undefined.\n\n");
}

TEST(interruption, ends_a_search_in_a_block_and_frees_its_variables) {
    session s;
    s.enter("n = 10; \nx = 3");
    s.enter("begin");
    s.enter("y = BesselJ(n, x + n)");
    s.enter("end");
    s.enter("n = 200000000");
    const std::string listing = interrupted_listing(s, "solve(y, x)");
    EXPECT_NE(listing.find("       ERROR: interrupted.\n"), std::string::npos) << listing;
    EXPECT_EQ(listing.find("Solve:"), std::string::npos) << listing;
    EXPECT_NE(s.enter("x").find(" = 3 "), std::string::npos);
    EXPECT_NE(s.enter("x = 5").find("x = 5 "), std::string::npos);
}

TEST(interruption, does_not_reach_the_next_entry) {
    session s;
    s.stop().request();
    EXPECT_EQ(s.enter("1 m"), "[  1 ] 1 m\n        = 1 m\n\n");
}

TEST(interruption, ends_a_program_after_the_statement) {
    interruption stop;
    const interruption_scope obeys(stop);
    stop.request();
    EXPECT_EQ(interpret_dimensional_input_lines("1 m\n2 m\n").view(), "");
    stop.clear();
    EXPECT_EQ(interpret_dimensional_input_lines("1 m\n").view(), "[  1 ] 1 m\n        = 1 m\n\n");
}

TEST(interruption, is_obeyed_within_its_scope_only) {
    interruption outer;
    interruption inner;
    inner.request();
    EXPECT_FALSE(is_interrupted());
    {
        const interruption_scope obeys(outer);
        EXPECT_FALSE(is_interrupted());
        {
            const interruption_scope obeys_inner(inner);
            EXPECT_TRUE(is_interrupted());
        }
        EXPECT_FALSE(is_interrupted());
        outer.request();
        EXPECT_TRUE(is_interrupted());
    }
    EXPECT_FALSE(is_interrupted());
}

TEST(interruption, is_looked_at_once_in_4096_steps) {
    interruption stop;
    stop.request();
    const interruption_scope obeys(stop);
    EXPECT_TRUE(is_interrupted_at(8192));
    EXPECT_FALSE(is_interrupted_at(8193));
}

} // namespace
