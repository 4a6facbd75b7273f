// Runs that are ended while they compute.

#include "base/interruption.h"
#include "language/driver.h"
#include "language/session.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace {

using namespace metrify;
using std::chrono::milliseconds;

// Takes several seconds.
constexpr const char* long_value = "BesselJ(2000000000, 2000000001)";

// Enters the line and interrupts it while it is being computed. A request before that has no effect.
std::string interrupted_listing(session& s, const std::string& line,
                                milliseconds until_request = milliseconds(100)) {
    std::string shown;
    std::atomic<bool> is_done = false;
    std::thread entering([&] {
        shown = s.enter(line);
        is_done = true;
    });
    while (!is_done) {
        std::this_thread::sleep_for(until_request);
        s.stop().request();
    }
    entering.join();
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

const interruption_scope* asking_scope;
std::int64_t polls_at_question;

bool ends_the_run() noexcept {
    polls_at_question = asking_scope->polls();
    return true;
}

TEST_P(interrupted_function, ends_at_the_poll_that_makes_the_request) {
    interruption stop;
    const interruption_scope obeys(stop, ends_the_run);
    asking_scope = &obeys;
    interpret_dimensional_input_lines(GetParam());
    asking_scope = nullptr;
    EXPECT_TRUE(stop.is_requested());
    EXPECT_EQ(obeys.polls(), polls_at_question);
}

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

TEST(interruption, is_reported_before_the_first_statement_too) {
    session s;
    std::atomic<bool> is_started = false;
    std::atomic<bool> is_done = false;
    std::thread requesting([&] {
        for (; !is_done; is_started = true)
            s.stop().request();
    });
    while (!is_started)
        std::this_thread::yield();
    // Most of the entries are interrupted in the statement.
    for (int i = 0; i < 100; ++i) {
        const std::string listing = s.enter(std::string("x = ") + long_value);
        EXPECT_NE(listing.find("       ERROR: interrupted.\n\n"), std::string::npos) << listing;
    }
    is_done = true;
    requesting.join();
    EXPECT_EQ(s.enter("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
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

TEST(interruption, is_polled_once_in_4096_steps) {
    interruption stop;
    stop.request();
    const interruption_scope obeys(stop);
    EXPECT_TRUE(is_interrupted_at(8192));
    EXPECT_FALSE(is_interrupted_at(8193));
}

TEST(interruption, keeps_what_the_statements_before_it_in_the_entry_have_assigned) {
    session s;
    s.enter("x = 1 m\nz = 7");
    interrupted_listing(s, std::string("x = 2 m\ny = 3 s\nx = ") + long_value + "\nz = 8\nw = 4");
    EXPECT_EQ(s.enter("x"), "[  5 ] x\n        = 2 m\n\n");
    EXPECT_EQ(s.enter("y"), "[  6 ] y\n        = 3 s\n\n");
    EXPECT_EQ(s.enter("z"), "[  7 ] z\n        = 7 \n\n");
    EXPECT_EQ(s.enter("w"), "[  8 ] w\n       ERROR: 'w' undefined.\n\n");
}

TEST(interruption, undoes_what_a_block_has_assigned) {
    session s;
    s.enter("n = 10; \nx = 3");
    s.enter("begin\nu = x + n\ny = BesselJ(n, u)\nend");
    s.enter("u = 5 kg");
    interrupted_listing(s, "n = 200000000\nv = solve(y, x)");
    EXPECT_NE(s.enter("u").find(" = 5 kg"), std::string::npos);
    EXPECT_NE(s.enter("x").find(" = 3 "), std::string::npos);
    EXPECT_NE(s.enter("n").find(" = 2e+08 "), std::string::npos);
    EXPECT_NE(s.enter("v").find("'v' undefined"), std::string::npos);
}

TEST(interruption, undoes_what_the_report_of_a_block_has_assigned) {
    session s;
    s.enter("n = 10\nx = 3");
    s.enter("begin\nu = x + n\ny = BesselJ(n, u)\nend");
    s.enter("n = 2000000000; \nu = 5 kg");
    interrupted_listing(s, "x = 2\nfunc(x, 1)");
    EXPECT_NE(s.enter("u").find(" = 5 kg"), std::string::npos);
    EXPECT_NE(s.enter("x").find(" = 2 "), std::string::npos);
}

TEST(interruption, undoes_what_the_report_of_an_earlier_search_has_assigned) {
    session s;
    s.enter("n = 10\nx = 3");
    s.enter("begin\nu = x + n\ny = BesselJ(n, u) + 2\nend");
    EXPECT_NE(s.enter("solve(y, x)").find("ERROR"), std::string::npos);
    const std::string listing = interrupted_listing(s, "n = 2000000000");
    EXPECT_NE(listing.find("Sol1"), std::string::npos) << listing;
    EXPECT_NE(listing.find("       ERROR: interrupted.\n"), std::string::npos) << listing;
    EXPECT_NE(s.enter("n").find(" = 10 "), std::string::npos);
    EXPECT_EQ(s.enter("u").find("e+09"), std::string::npos);
}

TEST(interruption, undoes_what_the_listing_of_a_block_has_assigned) {
    session s;
    s.enter("n = 10\nx = 3");
    s.enter("begin\nu = x + n\ny = BesselJ(n, u)\nend");
    s.enter("n = 2000000000; \nu = 5 kg");
    interrupted_listing(s, "PrintFunc");
    EXPECT_NE(s.enter("u").find(" = 5 kg"), std::string::npos);
}

TEST(interruption, leaves_a_unit_undefined_whose_value_was_being_computed) {
    session s;
    const std::string listing = interrupted_listing(s, std::string("DefUnit(foo, ") + long_value + ")");
    EXPECT_NE(listing.find("       ERROR: interrupted.\n"), std::string::npos) << listing;
    EXPECT_EQ(listing.find("User defined unit"), std::string::npos) << listing;
    EXPECT_EQ(s.enter("DefUnit(foo, 3 m)").find("ERROR"), std::string::npos) << "the name is free";
}

TEST(interruption, keeps_a_variable_whose_component_was_being_assigned) {
    session s;
    s.enter("p = [1, 2, 3] m");
    interrupted_listing(s, std::string("p[2] = ") + long_value);
    EXPECT_EQ(s.enter("p"), "[  2 ] p\n        = [ 1 , 2 , 3 ] m\n\n");
}

struct long_loop {
    const char* line;
    std::int64_t polls; // one of the call, and one in 4096 steps
};

class long_loop_test : public testing::TestWithParam<long_loop> {};

TEST_P(long_loop_test, polls_the_request_once_in_4096_steps) {
    interruption stop;
    const interruption_scope obeys(stop);
    interpret_dimensional_input_lines(GetParam().line);
    EXPECT_EQ(obeys.polls(), GetParam().polls);
}

// The steps: up to the order; down from the order plus the root of 40 times the order; down from twice that;
// down and then up by the difference of order and argument.
INSTANTIATE_TEST_SUITE_P(functions, long_loop_test,
                         testing::Values(long_loop{"BesselJ(4096001, 5000000)", 1 + 1000},
                                         long_loop{"BesselY(4096001, 5000000)", 1 + 1000},
                                         long_loop{"BesselJ(4096000, 4095000)", 1 + 1003},
                                         long_loop{"BesselI(4096000, 1.1984e10)", 1 + 2006},
                                         long_loop{"BesselJ(1000000000.5, 999959040)", 1 + 10 + 10}));

std::int64_t polls_of(const std::string& program) {
    interruption stop;
    const interruption_scope obeys(stop);
    interpret_dimensional_input_lines(program.c_str());
    return obeys.polls();
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(interruption, is_polled_once_in_4096_terms_and_factors) {
    EXPECT_EQ(polls_of("1" + repeated(" + 1", 4094) + "\n"), 0);
    EXPECT_EQ(polls_of("1" + repeated(" + 1", 4095) + "\n"), 1);
    EXPECT_EQ(polls_of("1" + repeated(" - 1", 8191) + "\n"), 2);
    EXPECT_EQ(polls_of("1" + repeated(" * 1", 4094) + "\n"), 0);
    EXPECT_EQ(polls_of("1" + repeated(" / 1", 8191) + "\n"), 2);
}

TEST(interruption, ends_a_line_of_many_terms_or_factors) {
    for (const char* operation : {"+1", "*1"}) {
        session s;
        const std::string line = "1" + repeated(operation, 8'000'000);
        EXPECT_EQ(interrupted_listing(s, line), "[  1 ] " + line + "\n       ERROR: interrupted.\n\n");
    }
}

// The long comment is being listed when the request arrives.
TEST(interruption, is_reported_even_if_a_comment_contains_the_message) {
    session s;
    const std::string program = "# ERROR: interrupted.\n" + repeated("#\n", 8'000'000) + "x = 1\n";
    const std::string listing = interrupted_listing(s, program, milliseconds(20));
    EXPECT_TRUE(listing.ends_with("\n       ERROR: interrupted.\n\n")) << listing.substr(listing.size() - 40);
}

TEST(interruption, is_polled_once_in_4096_statements_of_a_block) {
    const auto solved = [](int statements) {
        return polls_of("x = 1\nbegin\n" + repeated("z = x\n", statements - 1) +
                        "y = x - 3\nend\nsolve(y, x)\n");
    };
    const std::int64_t evaluations = solved(1);
    EXPECT_GT(evaluations, 1);
    EXPECT_EQ(solved(4095), evaluations);
    EXPECT_EQ(solved(4096), 2 * evaluations);
    EXPECT_EQ(solved(8192), 3 * evaluations);
}

TEST(interruption, is_polled_in_each_evaluation_of_a_block) {
    interruption stop;
    const interruption_scope obeys(stop);
    const listing shown = interpret_dimensional_input_lines(
        "count = 0\nbegin\ncount = count + 1\nx = 2\ny = x^3 - 2*x - 5\nend\nsolve(y, x)\n");
    // The first run of the block and its listing are no evaluations.
    const std::string counted = "       count = " + std::to_string(obeys.polls() + 2) + " \n";
    EXPECT_GT(obeys.polls(), 5);
    EXPECT_NE(std::string(shown.view()).rfind(counted), std::string::npos) << shown.view();
}

} // namespace
