// Replay of instruction lists: single instructions, and statements that the parser has compiled.

#include "language/assignment.h"
#include "language/expression.h"
#include "machine/evaluator.h"
#include "machine/function_dispatch.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

constexpr unit_scale in_feet = {0, 0.0, 4.0, {}, in_m};

class evaluator : public testing::Test {
  protected:
    evaluator() { forget(); }
    ~evaluator() override { forget(); }

    static void forget() {
        reset_expression_state();
        reset_unit_state();
        free_user_units();
        free_all_vars();
    }

    // The result of the list; the message is in err.
    dim_value evaluate() {
        err.append("an old message");
        dim_value result = vector(7, 7, 7, in_N);
        eval_compiled_stck(result, list, err.str);
        return result;
    }

    // Runs a statement through the parser, which appends its instructions to the list.
    dim_value compile(const std::string& statement) {
        str_clear(&err.str);
        cursor p(statement.c_str());
        dim_value result;
        EXPECT_TRUE(compile_input_line(p, result, &list, err.str)) << statement << ": " << err.view();
        return result;
    }

    code_list list;
    work_text err;
};

void expect_equal(const dim_value& got, const dim_value& expected) {
    EXPECT_TRUE(equal(got, expected)) << described(got);
}

TEST_F(evaluator, clears_result_and_message_for_an_empty_list) {
    expect_equal(evaluate(), scalar(0));
    EXPECT_EQ(err.view(), "");
}

TEST_F(evaluator, has_a_cleared_result_until_an_instruction_sets_it) {
    list.emit(OP_PUSH_VALUE, scalar(5));
    expect_equal(evaluate(), scalar(0));
}

TEST_F(evaluator, pops_the_top_into_the_result) {
    list.emit(OP_PUSH_VALUE, vector(1, 2, 3, in_m));
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), vector(1, 2, 3, in_m));
}

TEST_F(evaluator, pops_an_empty_stack_as_a_cleared_record) {
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(0));
}

TEST_F(evaluator, clears_the_result_at_the_head_of_a_statement) {
    list.emit(OP_PUSH_VALUE, scalar(5));
    list.emit(OP_POP_RESULT);
    list.emit(OP_NOP);
    expect_equal(evaluate(), scalar(0));
}

TEST_F(evaluator, carries_out_the_operators) {
    struct {
        opcode code;
        double result;
    } const cases[] = {{OP_ADD, 8}, {OP_SUB, 4}, {OP_MUL, 12}, {OP_DIV, 3}, {OP_POW, 36}};
    for (const auto& c : cases) {
        list.clear();
        list.emit(OP_PUSH_VALUE, scalar(6));
        list.emit(OP_PUSH_VALUE, scalar(2));
        list.emit(c.code);
        list.emit(OP_POP_RESULT);
        expect_equal(evaluate(), scalar(c.result));
    }
    list.clear();
    list.emit(OP_PUSH_VALUE, scalar(6));
    list.emit(OP_NEGATE);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(-6));
}

TEST_F(evaluator, assigns_and_requests_units) {
    list.emit(OP_PUSH_VALUE, scalar(10));
    list.emit(OP_PUSH_UNIT, in_feet);
    list.emit(OP_UNIT_ASSIGN);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(2.5, in_m));
    list.clear();
    list.emit(OP_PUSH_VALUE, scalar(2.5, in_m));
    list.emit(OP_PUSH_UNIT, in_feet);
    list.emit(OP_REQUEST_UNITS);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(10));
}

TEST_F(evaluator, reads_a_variable_at_the_time_of_the_replay) {
    var_entry& x = add_var("x", scalar(1));
    list.emit(OP_PUSH_VAR, &x);
    list.emit(OP_POP_RESULT);
    x.value = scalar(9, in_m);
    expect_equal(evaluate(), scalar(9, in_m));
}

TEST_F(evaluator, assigns_a_variable_and_leaves_its_value_on_the_stack) {
    var_entry& x = add_var("x", scalar(1));
    list.emit(OP_PUSH_VALUE, vector(1, 2, 3, in_m));
    list.emit(OP_SETVAR, &x);
    list.emit(OP_NEGATE);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), vector(-1, -2, -3, in_m));
    expect_equal(x.value, vector(1, 2, 3, in_m));
}

TEST_F(evaluator, assigns_a_component_and_has_the_whole_vector_then) {
    const opcode codes[] = {OP_SETVAR_C1, OP_SETVAR_C2, OP_SETVAR_C3};
    const dim_value results[] = {vector(9, 2, 3, in_s), vector(1, 9, 3, in_s), vector(1, 2, 9, in_s)};
    for (std::size_t i = 0; i < 3; ++i) {
        forget();
        list.clear();
        var_entry& x = add_var("x", vector(1, 2, 3, in_m));
        list.emit(OP_PUSH_VALUE, scalar(9, in_s)); // at a replay nothing tests the units
        list.emit(codes[i], &x);
        expect_equal(evaluate(), results[i]);
        expect_equal(x.value, results[i]);
        list.emit(OP_POP_RESULT);
        expect_equal(evaluate(), results[i]);
    }
}

TEST_F(evaluator, assigns_zero_from_an_empty_stack) {
    var_entry& x = add_var("x", scalar(1, in_m));
    list.emit(OP_SETVAR, &x);
    expect_equal(evaluate(), scalar(0));
    expect_equal(x.value, scalar(0));
}

TEST_F(evaluator, makes_a_vector_of_the_number_of_entries_in_the_record) {
    list.emit(OP_PUSH_VALUE, scalar(4));
    list.emit(OP_PUSH_VALUE, scalar(5));
    list.emit(OP_PUSH_VALUE, pack_three_ints(0, 0, 2));
    list.emit(OP_MAKE_VECTOR, pack_three_ints(0, 0, 3)); // not read at a replay
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), vector(4, 5, 0));
}

TEST_F(evaluator, calls_the_function_that_the_record_names) {
    const char* const name = "sqrt";
    cursor p(name);
    function_ref sqrt_function;
    ASSERT_TRUE(lookup_function(p, sqrt_function));
    list.emit(OP_PUSH_VALUE, scalar(9));
    list.emit(OP_PUSH_VALUE, pack_three_ints(sqrt_function.number, sqrt_function.mode, 1));
    list.emit(OP_CALL_FUNC, pack_three_ints(1, 0, 2)); // not read at a replay
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(3));
    EXPECT_EQ(err.view(), "");
}

TEST_F(evaluator, passes_over_an_opcode_of_19_or_more) {
    list.emit(OP_PUSH_VALUE, scalar(5));
    list.emit(19);
    list.emit(20);
    list.emit(0xffffffffU);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(5));
    EXPECT_EQ(err.view(), "");
}

TEST_F(evaluator, stops_at_the_first_message_with_the_result_of_that_moment) {
    var_entry& x = add_var("x", scalar(1));
    list.emit(OP_PUSH_VALUE, scalar(5));
    list.emit(OP_POP_RESULT);
    list.emit(OP_PUSH_VALUE, scalar(1));
    list.emit(OP_PUSH_VALUE, scalar(0));
    list.emit(OP_DIV);
    list.emit(OP_SETVAR, &x);
    list.emit(OP_POP_RESULT);
    expect_equal(evaluate(), scalar(5));
    EXPECT_EQ(err.view(), "ERROR: Numerical over or underflow while dividing.\n");
    expect_equal(x.value, scalar(1));
}

TEST_F(evaluator, keeps_assignments_made_before_a_failure) {
    var_entry& x = add_var("x", scalar(1));
    list.emit(OP_PUSH_VALUE, scalar(5));
    list.emit(OP_SETVAR, &x);
    list.emit(OP_PUSH_VALUE, scalar(0));
    list.emit(OP_DIV);
    expect_equal(evaluate(), scalar(5));
    EXPECT_NE(err.view(), "");
    expect_equal(x.value, scalar(5));
}

TEST_F(evaluator, may_run_a_list_again_and_again) {
    var_entry& x = add_var("x", scalar(1));
    list.emit(OP_PUSH_VAR, &x);
    list.emit(OP_PUSH_VALUE, scalar(2));
    list.emit(OP_MUL);
    list.emit(OP_SETVAR, &x);
    list.emit(OP_POP_RESULT);
    for (int i = 1; i <= 10; ++i)
        expect_equal(evaluate(), scalar(std::pow(2.0, i)));
}

// A statement means the same when it is read and when it is replayed.

TEST_F(evaluator, gives_what_the_parser_gave) {
    compile("u = 3 ft");
    compile("v = [1, 2, 3] kg");
    list.clear();
    for (const char* statement : {
             "",
             "3",
             "-3",
             "2 + 3 * 4",
             "2 ^ 3 ^ 2",
             "(2 + 3) * -(4 - 1)",
             "3 ft + 2 in",
             "20 degC",
             "(1 + ) * 2",
             "u * u / 2 s",
             "-u",
             "- v",
             "v[2] + 1 kg",
             "[1 m, 0, 3 m] * 2",
             "[ ]",
             "[u]",
             "Number(u, in) + Number(7 s)",
             "sqrt(u * u) + abs(-u)",
             "2 ^ (1 + 1) ft",
             "3 rad * u",
         }) {
        list.clear();
        const dim_value read = compile(statement);
        const dim_value replayed = evaluate();
        EXPECT_EQ(err.view(), "") << statement;
        EXPECT_TRUE(equal(replayed, read)) << statement << ": " << described(replayed);
    }
}

TEST_F(evaluator, repeats_assignments_without_the_text) {
    compile("n = 0");
    compile("sum = [0, 0, 0]");
    list.clear();
    compile("n = n + 1");
    compile("sum[2] = sum[2] + n");
    dim_value result;
    for (int i = 2; i <= 4; ++i)
        result = evaluate();
    expect_equal(find_var("n")->value, scalar(4));
    expect_equal(result, vector(0, 10, 0)); // 1 + 2 + 3 + 4
    expect_equal(find_var("sum")->value, vector(0, 10, 0));
}

TEST_F(evaluator, replays_with_the_variables_of_the_moment) {
    compile("x = 2 m");
    list.clear();
    const dim_value area = compile("x * x");
    expect_equal(area, scalar(4, {0, 0, 0, 2, 0, 0, 0, 0}));
    find_var("x")->value = scalar(3, in_s);
    expect_equal(evaluate(), scalar(9, {0, 2, 0, 0, 0, 0, 0, 0}));
}

TEST_F(evaluator, keeps_the_meaning_that_units_had_when_they_were_read) {
    compile("u = 1");
    list.clear();
    compile("3 ft");
    set_unit_system(system_cgs);
    EXPECT_NEAR(evaluate().comp[0], 0.9144, 1e-14);
}

TEST_F(evaluator, reports_what_the_variables_make_impossible_by_now) {
    compile("x = 2 m");
    list.clear();
    compile("x + 1 m");
    find_var("x")->value = scalar(3, in_s);
    evaluate();
    EXPECT_EQ(err.view(), "ERROR:  Adding incompatible units: 's' AND 'm'.\n");
}

} // namespace
