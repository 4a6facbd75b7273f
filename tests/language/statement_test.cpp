// The statement number and the cursor after a line.

#include "language/driver.h"
#include "language/expression.h"
#include "language/statement.h"
#include "machine/func_block.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

struct outcome {
    line_result result;
    int counter; // 1 when the line began
    std::string out;
    std::string err;
    std::size_t end; // of the cursor
};

class statement : public testing::Test {
  protected:
    statement() { forget(); }
    ~statement() override { forget(); }

    static void forget() {
        reset_expression_state();
        reset_func_block();
        reset_unit_state();
        free_all_vars();
        free_user_units();
    }

    outcome compile(const std::string& text, const char* prefix = "") {
        work_text out;
        work_text err;
        const cursor start(text.c_str());
        cursor p = start;
        skip_blanks(p);
        code.clear();
        int counter = 1;
        const line_result result =
            compile_one_full_line(prefix, counter, start, p, run_lines, out.str, &code, err.str);
        return {result, counter, std::string(out.view()), std::string(err.view()),
                static_cast<std::size_t>(p.at - start.at)};
    }

    code_list code;
};

TEST_F(statement, that_is_compiled_has_instructions_and_no_message) {
    const outcome got = compile("x = 3 ft");
    EXPECT_EQ(got.result, line_result::compiled);
    EXPECT_EQ(got.counter, 1);
    EXPECT_EQ(got.out, "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n");
    EXPECT_EQ(got.err, "");
    EXPECT_FALSE(code.nodes().empty());
}

TEST_F(statement, that_fails_returns_its_message) {
    const outcome got = compile("3 + ");
    EXPECT_EQ(got.result, line_result::failed);
    EXPECT_EQ(got.counter, 1);
    EXPECT_EQ(got.out, "[  1 ] 3 + \n       ERROR: Math expression incomplete.\n\n");
    EXPECT_EQ(got.err, "ERROR: Math expression incomplete.\n");
}

TEST_F(statement, has_the_prefix_before_its_number) {
    EXPECT_EQ(compile("1", "Sol").out, "[  Sol1 ] 1\n        = 1 \n\n");
}

TEST_F(statement, is_echoed_with_its_leading_blanks) {
    EXPECT_EQ(compile("  \t1 # note").out, "[  1 ]   \t1 # note\n        = 1 \n\n");
}

TEST_F(statement, leaves_the_cursor_at_the_line_end_also_on_failure) {
    for (const std::string line :
         {"1", "1 # note", "1; m; # note", "1 + ; m", "MKS", "MKS(", "end = 3 # note", "begin 1",
          "DefUnit(foo, 3) and more", "sin(]", "1; foo", "PrintFunc now"}) {
        reset_expression_state();
        EXPECT_EQ(compile(line + "\n2 + 3").end, line.size()) << line;
        reset_expression_state();
        EXPECT_EQ(compile(line).end, line.size()) << line;
    }
}

TEST_F(statement, includes_a_continuation_line) {
    const std::string text = "1 + \\ more\n2";
    const outcome got = compile(text + "\n3");
    EXPECT_EQ(got.end, text.size());
    EXPECT_EQ(got.out, "[  1 ] " + text + "\n        = 3 \n\n");
}

// Numbers of special lines.

TEST_F(statement, with_a_keyword_increments_the_counter_once_more) {
    for (const char* line :
         {"MKS", "mks", "cgs(N)", "FPS", "IPS", "DefUnit(foo, 3 ft)", "DefUnit(foo)", "end", "PrintFunc"}) {
        const outcome got = compile(line);
        EXPECT_EQ(got.result, line_result::special) << line;
        EXPECT_EQ(got.counter, 2) << line;
        EXPECT_EQ(got.err, "") << line;
        EXPECT_TRUE(code.nodes().empty()) << line;
    }
}

TEST_F(statement, with_a_keyword_that_fails_does_not_count_and_returns_its_message) {
    for (const char* line : {"MKS(", "cgs(foo)", "FPS(m", "IPS(x)", "DefUnit(m, 2)", "DefUnit(foo, 0)"}) {
        const outcome got = compile(line);
        EXPECT_EQ(got.result, line_result::special) << line;
        EXPECT_EQ(got.counter, 1) << line;
        EXPECT_NE(got.err, "") << line;
    }
}

TEST_F(statement, that_begins_a_block_does_not_count) {
    const outcome got = compile("begin");
    EXPECT_EQ(got.result, line_result::special);
    EXPECT_EQ(got.counter, 1);
    EXPECT_EQ(got.out, "[  1 ] begin\n       \n");
}

TEST_F(statement, that_ends_no_block_counts_and_has_a_message) {
    const outcome got = compile("end");
    EXPECT_EQ(got.counter, 2);
    EXPECT_EQ(got.out, "[  1 ] end\n       ERROR: Missing BEGIN.\n\n\n");
}

// Requests.

TEST_F(statement, returns_the_message_of_its_last_request) {
    const outcome bad_at_last = compile("1 m; cm; s");
    EXPECT_EQ(bad_at_last.result, line_result::compiled);
    EXPECT_EQ(bad_at_last.err, "ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n");
    EXPECT_EQ(bad_at_last.out, "[  1 ] 1 m; cm; s\n       ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n"
                               "        = 100 cm\n\n");
    const outcome good_at_last = compile("1 m; s; cm");
    EXPECT_EQ(good_at_last.err, "");
}

TEST_F(statement, keeps_its_assignment_if_a_request_fails) {
    compile("x = 3 m; s");
    ASSERT_NE(find_var("x"), nullptr);
    EXPECT_TRUE(equal(find_var("x")->value, scalar(3, in_m)));
}

TEST_F(statement, shows_its_result_normalized_and_stores_it_unchanged) {
    // An operator does not normalize its value, but a statement normalizes its result.
    var_entry& x = add_var("x", scalar(2, {1, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(compile("y = x").out, "[  1 ] y = x\n       y = 2 m\n\n");
    EXPECT_TRUE(equal(find_var("y")->value, x.value));
}

} // namespace
