#include "language/driver.h"
#include "language/session.h"
#include "machine/solver_binding.h"
#include "tests/allocations.h"
#include "units/unit_system.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using metrify::session;

TEST(session, keeps_variables) {
    session s;
    EXPECT_EQ(s.enter("x = 3 ft"), "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n");
    EXPECT_EQ(s.enter("x; in"), "[  2 ] x; in\n        = 36 in\n\n");
}
TEST(session, keeps_user_units_and_default_units) {
    session s;
    s.enter("DefUnit(ell, 18 in)");
    EXPECT_NE(s.enter("2 ell; in").find(" = 36 in"), std::string::npos);
    s.enter("cgs");
    EXPECT_NE(s.enter("1 ell").find(" = 45.72 cm"), std::string::npos);
}
TEST(session, continues_after_an_error) {
    session s;
    s.enter("x = 1 m");
    EXPECT_NE(s.enter("x + 1 s").find("ERROR:"), std::string::npos);
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}
TEST(session, lists_only_the_new_entry) {
    session s;
    s.enter("1 m");
    const std::string second = s.enter("2 m");
    EXPECT_EQ(second.find("1 m"), std::string::npos) << second;
}
TEST(session, keeps_the_comments_of_two_entries_apart) {
    session s;
    s.enter("# one");
    EXPECT_NE(s.enter("# two").find("# two"), std::string::npos);
    EXPECT_NE(s.enter("1 m").find(" = 1 m"), std::string::npos);
}
TEST(session, accepts_an_empty_entry) {
    session s;
    s.enter("x = 1 m");
    EXPECT_EQ(s.enter(""), "");
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}
TEST(session, keeps_a_result_as_a_variable) {
    session s;
    s.enter("3 ft");
    s.keep_result_as("ans");
    EXPECT_NE(s.enter("ans; in").find(" = 36 in"), std::string::npos);
    s.enter("2 kg");
    s.keep_result_as("ans");
    s.enter("nothing");
    s.keep_result_as("ans");
    EXPECT_NE(s.enter("ans").find(" = 2 kg"), std::string::npos);
}
TEST(session, does_not_assign_a_variable_of_the_user_or_a_unit) {
    session s;
    s.enter("ans = 3 ft");
    s.enter("7 kg");
    s.keep_result_as("ans");
    EXPECT_NE(s.enter("ans; ft").find(" = 3 ft"), std::string::npos);
    s.start_over();
    s.enter("1 m");
    s.keep_result_as("ans");
    s.enter("ans = 5 m");
    s.enter("7 kg");
    s.keep_result_as("ans");
    EXPECT_NE(s.enter("ans").find(" = 5 m"), std::string::npos);
    s.start_over();
    s.enter("DefUnit(ans, 2 m)");
    s.enter("1 kg");
    s.keep_result_as("ans");
    EXPECT_NE(s.enter("1 ans").find(" = 2 m"), std::string::npos);
}
TEST(session, knows_whether_a_block_is_open) {
    session s;
    EXPECT_FALSE(s.is_block_open());
    s.enter("begin");
    s.enter("y = 1");
    EXPECT_TRUE(s.is_block_open());
    s.enter("end");
    EXPECT_FALSE(s.is_block_open());
}
TEST(session, tells_the_names_that_are_defined) {
    session s;
    s.enter("x = 1");
    s.enter("DefUnit(ell, 18 in)");
    s.enter("a = 2");
    EXPECT_EQ(s.defined_names(), (std::vector<std::string>{"x", "a", "ell"}));
}
TEST(session, resets_everything_when_it_starts_over) {
    session s;
    s.enter("x = 1 m");
    s.start_over();
    EXPECT_EQ(s.enter("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
}
TEST(session, evaluates_an_entry_once) {
    session s;
    s.enter("x = 1 m");
    s.enter("x = x + x");
    s.enter("x = x + x");
    EXPECT_EQ(s.enter("x"), "[  4 ] x\n        = 4 m\n\n");
}
TEST(session, does_not_run_earlier_entries_again) {
    session s;
    s.enter("1 m");
    const auto allocations_of = [&s](const char* entry) {
        const std::size_t before = metrify::test::allocations();
        s.enter(entry);
        return metrify::test::allocations() - before;
    };
    const std::size_t at_first = allocations_of("1 m");
    for (int i = 0; i < 200; ++i)
        s.enter("v" + std::to_string(i) + " = " + std::to_string(i) + " m");
    EXPECT_LE(allocations_of("1 m"), at_first + 5);
}
TEST(session, recognises_an_entry_that_is_continued) {
    EXPECT_TRUE(session::is_continued("1 + \\"));
    EXPECT_TRUE(session::is_continued("1 + \\\n2 + \\"));
    EXPECT_FALSE(session::is_continued("1 + \\\n2"));
    EXPECT_FALSE(session::is_continued("1 + 2"));
    EXPECT_FALSE(session::is_continued("1 # \\"));
}
TEST(session, accepts_an_entry_of_several_lines) {
    session s;
    EXPECT_NE(s.enter("1 m + \\\n2 m").find(" = 3 m"), std::string::npos);
}
TEST(session, continues_after_an_entry_that_is_nested_too_deeply) {
    session s;
    s.enter("x = 1 m");
    s.enter(std::string(300, '(') + "1" + std::string(300, ')'));
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}
TEST(session, continues_after_an_entry_that_the_progress_guard_stops) {
    session s;
    s.enter("x = 1 m");
    EXPECT_NE(s.enter("sin(]").find("ERROR: Cannot parse line -- check nesting"), std::string::npos);
    EXPECT_EQ(s.enter("x"), "[  2 ] x\n        = 1 m\n\n");
}
TEST(session, lists_a_block_whose_text_spans_entries) {
    session s;
    s.enter("begin");
    s.enter("y = 2 m");
    s.enter("end");
    s.enter("1 s");
    EXPECT_EQ(s.enter("PrintFunc"),
              "[  4 ] PrintFunc\n       Header:\n[  PrintFunc1 ] y = 2 m\n       y = 2 m\n\n"
              "[  PrintFunc2 ] end\n       \n\n\n");
}
TEST(session, writes_the_report_of_a_solve_that_failed_in_an_earlier_entry) {
    session s;
    s.enter("x = 2");
    s.enter("begin");
    s.enter("y = x^2 + 1");
    s.enter("end");
    EXPECT_NE(s.enter("solve(y, x)").find("ERROR:"), std::string::npos);
    EXPECT_NE(s.enter("1 m").find("Solve:"), std::string::npos);
    EXPECT_EQ(s.enter("1 m").find("Solve:"), std::string::npos);
}
TEST(session, drops_a_pending_report_when_it_starts_over) {
    session s;
    s.enter("x = 2");
    s.enter("begin\ny = x^2 + 1\nend");
    s.enter("solve(y, x)");
    s.start_over();
    EXPECT_EQ(s.enter("1 m"), "[  1 ] 1 m\n        = 1 m\n\n");
}
TEST(session, is_independent_of_other_sessions_and_of_the_thread) {
    session a;
    session b;
    a.enter("x = 1 m");
    b.enter("x = 2 s");
    metrify::interpret_dimensional_input_lines("x = 3 kg\ncgs");
    EXPECT_EQ(a.enter("x"), "[  2 ] x\n        = 1 m\n\n");
    EXPECT_EQ(b.enter("x"), "[  2 ] x\n        = 2 s\n\n");
}
TEST(session, leaves_the_calculator_of_the_thread_as_it_is) {
    metrify::reset_unit_state();
    session s;
    s.enter("cgs");
    EXPECT_EQ(metrify::current_unit_system(), metrify::system_MKS);
}

std::vector<std::string> entries_of(const fs::path& program) {
    std::ifstream in(program, std::ios::binary);
    std::vector<std::string> entries;
    bool goes_on = false;
    for (std::string line; std::getline(in, line);) {
        if (goes_on)
            entries.back() += "\n" + line;
        else
            entries.push_back(line);
        goes_on = session::is_continued(entries.back());
    }
    return entries;
}

// The guard stops the rest of a program but only one entry of a session.
bool is_stopped(const std::string& listing) {
    return listing.find("check nesting of parentheses") != std::string::npos;
}

TEST(session, gives_the_listing_of_one_program_for_every_golden_program) {
    int compared = 0;
    const fs::path folder = fs::path(METRIFY_SOURCE_DIR) / "tests" / "listings";
    for (const fs::directory_entry& file : fs::recursive_directory_iterator(folder)) {
        if (file.path().extension() != ".in")
            continue;
        session s;
        std::string program;
        std::string listing;
        for (const std::string& entry : entries_of(file.path())) {
            program += entry + "\n\n";
            listing += s.enter(entry);
        }
        if (program.find('\0') != std::string::npos || is_stopped(listing))
            continue;
        metrify::teardown_solver_binding();
        EXPECT_EQ(listing, metrify::interpret_dimensional_input_lines(program.c_str()).view()) << file.path();
        ++compared;
    }
    EXPECT_GT(compared, 500);
}

} // namespace
