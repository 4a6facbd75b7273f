// Independence of runs, and the handling of each kind of line. The golden programs test the listings.

#include "language/driver.h"
#include "language/expression.h"
#include "machine/func_block.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

TEST(driver, gives_an_empty_listing_for_an_empty_text) {
    const listing empty = interpret_dimensional_input_lines("");
    EXPECT_EQ(empty.view(), "");
    EXPECT_STREQ(empty.c_str(), "");
    for (const char* text : {"\n", "   ", " \t \n\n \t\n"})
        EXPECT_EQ(run(text), "") << text;
}

TEST(driver, gives_a_terminated_listing) {
    const listing shown = interpret_dimensional_input_lines("3.5 ft; m");
    EXPECT_STREQ(shown.c_str(), "[  1 ] 3.5 ft; m\n        = 1.0668 m\n\n");
    EXPECT_EQ(shown.view(), shown.c_str());
}

TEST(driver, treats_the_end_of_the_text_as_the_end_of_a_line) {
    EXPECT_EQ(run("2 + 3"), run("2 + 3\n"));
    EXPECT_EQ(run("x = 2\nx; "), run("x = 2\nx; \n"));
}

TEST(driver, does_not_change_the_text) {
    const std::string text = "x = [1, 2, 3] ft # note\nDefUnit(foo, 3 ft)\nx; foo\n3 +\n";
    const std::string copy = text;
    interpret_dimensional_input_lines(text.c_str());
    EXPECT_EQ(text, copy);
}

TEST(driver, can_run_the_same_text_twice) {
    const std::string text = "x = 3 ft\nMKS(ft)\nDefUnit(foo, x)\n6 foo\nbegin\ny = 2 x\nend\nPrintFunc\ny\n";
    const std::string first = run(text);
    EXPECT_EQ(run(text), first);
}

// A run does not affect the next one.

TEST(driver, forgets_variables) {
    EXPECT_EQ(run("x = 3"), "[  1 ] x = 3\n       x = 3 \n\n");
    EXPECT_EQ(run("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
    EXPECT_EQ(find_var("x"), nullptr);
}

TEST(driver, numbers_variables_from_201_in_each_run) {
    run("x = 1\ny = 2\nz = 3");
    EXPECT_EQ(add_var("x", scalar(1)).number, 201u);
    run("y = 2");
    EXPECT_EQ(add_var("x", scalar(1)).number, 201u);
    free_all_vars();
}

TEST(driver, allows_a_name_to_be_reused_in_the_next_run) {
    EXPECT_EQ(run("foo = 1"), "[  1 ] foo = 1\n       foo = 1 \n\n");
    EXPECT_EQ(run("DefUnit(foo, 3 m)"),
              "[  1 ] DefUnit(foo, 3 m)\n        User defined unit 'foo'  = 3 m\n\n\n");
    EXPECT_EQ(run("foo = 1"), "[  1 ] foo = 1\n       foo = 1 \n\n");
}

TEST(driver, forgets_default_units_and_their_exceptions) {
    run("MKS(ft)");
    EXPECT_EQ(run("3 ft"), "[  1 ] 3 ft\n        = 0.9144 m\n\n");
    run("cgs");
    EXPECT_EQ(run("3 ft"), "[  1 ] 3 ft\n        = 0.9144 m\n\n");
    EXPECT_EQ(run("MKS"), "[  1 ] MKS\n        Default units = MKS with 0 exceptions.\n\n\n");
}

TEST(driver, forgets_user_units) {
    run("DefUnit(foo, 3 ft)");
    EXPECT_EQ(run("2 foo"), "[  1 ] 2 foo\n       ERROR: 'foo' undefined.\n\n");
}

TEST(driver, forgets_the_function_block) {
    run("begin\nx = 1\nend");
    EXPECT_EQ(run("end"), "[  1 ] end\n       ERROR: Missing BEGIN.\n\n\n");
    EXPECT_EQ(run("PrintFunc"), "[  1 ] PrintFunc\n       \n");
    run("begin\nx = 1"); // left open
    EXPECT_EQ(run("end"), "[  1 ] end\n       ERROR: Missing BEGIN.\n\n\n");
}

TEST(driver, resets_the_progress_guard) {
    const std::string nesting =
        "ERROR: Cannot parse line -- check nesting of parentheses, brackets, and commas.\n";
    EXPECT_EQ(run("sin(]\n1 + 1"),
              "[  1 ] sin(]\n       " + nesting + "\n[  1 ] 1 + 1\n       " + nesting + "\n");
    EXPECT_EQ(run("1 + 1"), "[  1 ] 1 + 1\n        = 2 \n\n");
}

TEST(driver, counts_statements_from_1_in_each_run) {
    run("1\n2\n3");
    EXPECT_EQ(run("4"), "[  1 ] 4\n        = 4 \n\n");
}

TEST(driver, resets_state_that_was_set_outside_a_run) {
    work_text err;
    add_var("x", scalar(1));
    store_user_unit("foo", scalar(2, in_m), err.str);
    set_unit_system(system_FPS);
    begin_func_block(cursor("x"));
    EXPECT_EQ(run("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
    add_var("x", scalar(1));
    store_user_unit("foo", scalar(2, in_m), err.str);
    set_unit_system(system_FPS);
    EXPECT_EQ(run("3 m"), "[  1 ] 3 m\n        = 3 m\n\n");
    EXPECT_EQ(run("2 foo"), "[  1 ] 2 foo\n       ERROR: 'foo' undefined.\n\n");
    EXPECT_EQ(run("end"), "[  1 ] end\n       ERROR: Missing BEGIN.\n\n\n");
}

TEST(driver, leaves_nothing_in_the_stores_at_its_end) {
    run("x = 1\nDefUnit(foo, 3 ft)\nbegin\ny = 2\nend");
    EXPECT_EQ(find_var("x"), nullptr);
    EXPECT_EQ(find_var("y"), nullptr);
    const char* const name = "foo";
    cursor p(name);
    dim_value unit;
    EXPECT_FALSE(find_user_unit(p, unit));
    EXPECT_TRUE(block_code().nodes().empty());
}

// Lines.

TEST(driver, continues_after_a_line_that_fails) {
    EXPECT_EQ(run("3 +\n2 + 3"), "[  1 ] 3 +\n       ERROR: Math expression incomplete.\n\n"
                                 "[  1 ] 2 + 3\n        = 5 \n\n");
}

TEST(driver, gives_a_special_line_one_number) {
    EXPECT_EQ(run("1\nMKS\n2"), "[  1 ] 1\n        = 1 \n\n"
                                "[  2 ] MKS\n        Default units = MKS with 0 exceptions.\n\n\n"
                                "[  3 ] 2\n        = 2 \n\n");
}

TEST(driver, drops_each_of_the_directions) {
    for (const std::string direction : {
             "#  DIRECTIONS:",
             "#  (1) Enter your problem HERE in the INPUT tab.",
             "#  (2) Click the CALCULATE button.",
             "#  (3) The results are displayed in the OUTPUT tab.",
             "#  (3) The results are displayed under the OUTPUT tab.",
             "#  For examples, click on the QUICK START link or the Examples tab.",
             "#  See the QUICK START link or the Examples tab for more details.",
             "#  START TYPING BELOW:",
         }) {
        EXPECT_EQ(run(direction), "") << direction;
        EXPECT_EQ(run(direction + "\n1"), "[  1 ] 1\n        = 1 \n\n") << direction;
        EXPECT_EQ(run(" " + direction), "\n " + direction + "\n\n") << direction;
    }
}

TEST(driver, keeps_directions_that_follow_a_comment_in_its_block) {
    // Directions are dropped only at the head of a block.
    EXPECT_EQ(run("# note\n#  DIRECTIONS:\n"), "\n# note\n#  DIRECTIONS:\n\n");
}

TEST(driver, numbers_thousands_of_statements) {
    std::string program;
    std::string expected;
    for (int i = 1; i <= 3000; ++i) {
        const std::string n = std::to_string(i);
        program += n + "\n";
        expected += "[  " + n + " ] " + n + "\n        = " + n + " \n\n";
    }
    EXPECT_EQ(run(program), expected);
}

TEST(driver, grows_its_listing_beyond_the_first_capacity) {
    // Eight short requests give eight long answers.
    std::string program = "MKS\n";
    for (int i = 0; i < 20; ++i)
        program += "1 bar;MKS;MKS;MKS;MKS;MKS;MKS;MKS;MKS\n";
    const std::string shown = run(program);
    EXPECT_GT(shown.size(), 2 * program.size());
    EXPECT_TRUE(ends_with(shown, " = 100000 kg / m s^2\n\n")) << tail_of(shown);
}

// A part of a text.

TEST(run_lines, writes_the_prefix_before_the_numbers) {
    work_text out;
    work_text err;
    run_lines("Sol", cursor("1\n2"), out.str, err.str);
    EXPECT_EQ(out.view(), "[  Sol1 ] 1\n        = 1 \n\n[  Sol2 ] 2\n        = 2 \n\n");
}

TEST(run_lines, appends_to_the_existing_text) {
    work_text out;
    work_text err;
    out.append("listing:\n");
    run_lines("", cursor("1"), out.str, err.str);
    EXPECT_EQ(out.view(), "listing:\n[  1 ] 1\n        = 1 \n\n");
}

TEST(run_lines, ends_at_the_stop_pointer) {
    const char* const text = "12\n34\n";
    work_text out;
    work_text err;
    run_lines("", cursor(text, text + 3), out.str, err.str);
    EXPECT_EQ(out.view(), "[  1 ] 12\n        = 12 \n\n");
    str_clear(&out.str);
    run_lines("", cursor(text, text), out.str, err.str);
    EXPECT_EQ(out.view(), "");
    run_lines("", cursor(text, text + 5), out.str, err.str);
    EXPECT_EQ(out.view(), "[  1 ] 12\n        = 12 \n\n[  2 ] 34\n        = 34 \n\n");
}

} // namespace
