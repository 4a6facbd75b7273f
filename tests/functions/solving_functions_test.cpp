// The built-ins that use the block: effects that a program cannot show, and state that persists between runs.

#include "language/driver.h"
#include "machine/func_block.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "numerics/solve/minimise.h"
#include "numerics/solve/one_dim_root.h"
#include "tests/allocations.h"
#include "tests/functions/calling.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using namespace metrify::test;
using testing::HasSubstr;
using testing::Not;

constexpr std::int32_t function_func = 47;

std::string run(const std::string& program) {
    return std::string(interpret_dimensional_input_lines(program.c_str()).view());
}

/// No report is pending before or after a test.
class solving : public testing::Test {
  protected:
    solving() { teardown_solver_binding(); }
    ~solving() override {
        teardown_solver_binding();
        free_all_vars();
        reset_func_block();
    }
};

/// A block without a statement, for the calls of a test.
void define_empty_block() {
    static const char text[] = "";
    begin_func_block(cursor(text));
    end_func_block(cursor(text));
}

dim_value reference(std::int32_t number, std::int32_t component = 0) {
    return pack_two_ints(number, component);
}

TEST_F(solving, a_failed_solve_leaves_its_report_to_the_next_run) {
    EXPECT_THAT(run("begin\nx = 10\ny = x^2 + 1\nend\nsolve(y, x)\n"), HasSubstr("No solution found"));
    // There is no block in this run, so the report is empty; the value isn't shown all the same.
    EXPECT_EQ(run("3 ft; m"), "[  1 ] 3 ft; m\n       \n");
    EXPECT_EQ(run("3 ft; m"), "[  1 ] 3 ft; m\n        = 0.9144 m\n\n");
}

TEST_F(solving, a_report_that_is_due_shows_the_next_runs_block_if_there_is_one) {
    run("begin\nx = 10\ny = x^2 + 1\nend\nsolve(y, x)\n");
    // The first successful statement writes the report, which is empty: the block is not closed yet.
    EXPECT_EQ(run("begin\na = 1\nb = 2\nend\n"), "[  1 ] begin\n       \n[  1 ] a = 1\n       a\n[  2 ] b = "
                                                 "2\n       b = 2 \n\n[  3 ] end\n       \n\n");
}

TEST_F(solving, the_variables_of_the_next_run_are_not_held) {
    run("begin\nx = 10\nend\nsolve(q, x)\n");
    EXPECT_THAT(run("y = 1\nx = 5\nx = 6\n"), Not(HasSubstr("UPDATED VALUE")));
}

TEST_F(solving, the_sign_of_a_refused_maximum_ends_with_the_run) {
    run("begin\nx = 10\ny = x\nend\nfmax(q, x)\n");
    EXPECT_FALSE(bound_block().independents() == 0);
    EXPECT_TRUE(bound_block().is_negated());
    run("1");
    EXPECT_FALSE(bound_block().is_negated());
    EXPECT_EQ(bound_block().independents(), 0);
}

TEST_F(solving, func_refuses_an_odd_count) {
    define_empty_block();
    const outcome result = call_number(function_func, {reference(201), scalar(1.0), reference(202)});
    EXPECT_EQ(result.err, "ERROR:  func() requires an even number of args.\n");
    EXPECT_TRUE(is_cleared(result.value));
    EXPECT_EQ(result.depth, 2U);
    EXPECT_EQ(pending_report(), report_kind::none);
}

TEST_F(solving, func_continues_after_a_variable_that_cannot_be_set_and_leaves_its_report_pending) {
    define_empty_block();
    add_var("x", scalar(1.0));
    const outcome result =
        call_number(function_func, {reference(201), scalar(5.0, meter), reference(0), scalar(7.0)});
    EXPECT_EQ(result.err, "ERROR:  var num '0' undefined in setvar_by_num.\n");
    EXPECT_TRUE(equal(find_var("x")->value, scalar(5.0, meter)));
    EXPECT_EQ(pending_report(), report_kind::func);
    EXPECT_EQ(result.depth, 2U);
}

TEST_F(solving, each_refusal_leaves_one_cleared_value) {
    for (const char* name : {"solve", "fmin", "fmax", "func"}) {
        const outcome result = call(name, {reference(201), reference(202)});
        EXPECT_EQ(result.err, "ERROR:  Function not defined.\n") << name;
        EXPECT_TRUE(is_cleared(result.value)) << name;
        EXPECT_EQ(result.depth, 2U) << name;
    }
    define_empty_block();
    for (const char* name : {"solve", "fmin", "fmax"}) {
        const outcome result = call(name, {reference(201), reference(202)});
        EXPECT_EQ(result.err, "ERROR:  Variable number 202 undefined.\n") << name;
        EXPECT_EQ(result.depth, 2U) << name;
    }
}

TEST_F(solving, a_minimum_that_is_not_found_ends_the_binding) {
    run("begin\nx = 0\ny = x\nend\nfmin(y, x)\n");
    EXPECT_EQ(pending_report(), report_kind::none);
    EXPECT_EQ(bound_block().independents(), 0);
}

TEST_F(solving, a_minimum_that_is_not_found_clears_a_report_that_was_due) {
    EXPECT_THAT(run("begin\nx = 0\ny = x\nz = x^2 + 1\nend\nsolve(z, x)\nfmin(y, x)\n1 + 1\n"),
                HasSubstr("1 + 1\n        = 2 \n"));
}

TEST_F(solving, an_evaluation_writes_the_selected_component_and_keeps_the_rest) {
    define_empty_block();
    add_var("v", vector(1.0, 2.0, 3.0, meter));
    allocate_solver_binding(1, 3);
    record_independent(0, {201, 2});
    for (std::int32_t component = 1; component <= 3; ++component)
        record_dependent(static_cast<std::size_t>(component - 1), {201, component});
    work_text err;
    const double x = 7.0;
    double y[3] = {};
    bound_block().evaluate_function(&x, y, err.str);
    EXPECT_EQ(err.view(), "");
    EXPECT_EQ(y[0], 1.0);
    EXPECT_EQ(y[1], 7.0);
    EXPECT_EQ(y[2], 3.0);
    EXPECT_TRUE(equal(find_var("v")->value, vector(1.0, 7.0, 3.0, meter)));
}

TEST_F(solving, an_evaluation_entered_with_a_message_runs_nothing) {
    define_empty_block();
    add_var("x", scalar(1.0));
    allocate_solver_binding(1, 1);
    record_independent(0, {201, 0});
    record_dependent(0, {201, 0});
    work_text err;
    err.append("a message");
    const double x = 7.0;
    double y = 5.0;
    bound_block().evaluate_function(&x, &y, err.str);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(find_var("x")->value.comp[0], 1.0);
    EXPECT_EQ(err.view(), "a message");
}

TEST_F(solving, logarithms_are_taken_of_magnitudes_and_a_zero_stays_as_it_is) {
    define_empty_block();
    add_var("a", scalar(std::exp(2.0)));
    add_var("b", scalar(-std::exp(3.0)));
    add_var("c", scalar(0.0));
    allocate_solver_binding(3, 0);
    for (std::int32_t i = 0; i < 3; ++i)
        record_independent(static_cast<std::size_t>(i), {201 + i, 0});
    work_text err;
    save_start_values(err.str);
    set_scale_modes(true, err.str);
    double x[3] = {};
    bound_block().read_solver_vector(x, err.str);
    EXPECT_NEAR(x[0], 2.0, 1e-15);
    EXPECT_NEAR(x[1], 3.0, 1e-15);
    EXPECT_EQ(x[2], 0.0);
    const double moved[3] = {0.0, 0.0, 5.0};
    bound_block().evaluate_function(moved, nullptr, err.str);
    EXPECT_EQ(find_var("a")->value.comp[0], 1.0);
    EXPECT_EQ(find_var("b")->value.comp[0], -1.0);
    EXPECT_EQ(find_var("c")->value.comp[0], 5.0);
    restore_start_values(err.str);
    EXPECT_EQ(find_var("b")->value.comp[0], -std::exp(3.0));
    set_scale_modes(false, err.str);
    bound_block().read_solver_vector(x, err.str);
    EXPECT_EQ(x[1], -std::exp(3.0));
    EXPECT_EQ(err.view(), "");
}

TEST_F(solving, independents_are_held_until_the_teardown) {
    var_entry& x = add_var("x", scalar(1.0));
    add_var("y", scalar(2.0));
    allocate_solver_binding(1, 1);
    record_independent(0, {201, 0});
    record_dependent(0, {202, 0});
    EXPECT_TRUE(x.held);
    EXPECT_FALSE(find_var("y")->held);
    dim_value assigned = scalar(9.0, meter);
    setvar(x, assigned, 3);
    EXPECT_TRUE(equal(assigned, scalar(1.0)));
    EXPECT_TRUE(equal(x.value, scalar(1.0)));
    teardown_solver_binding();
    EXPECT_FALSE(x.held);
}

TEST_F(solving, number_zero_is_never_independent) {
    allocate_solver_binding(1, 0);
    record_independent(0, {0, 0});
    EXPECT_THAT(run("x = 1"), HasSubstr("x = 1\n       x = 1"));
}

TEST_F(solving, a_thousand_variables_in_a_block) {
    std::string program = "begin\nx0 = 10\n";
    for (int i = 1; i < 1000; ++i)
        program.append("x")
            .append(std::to_string(i))
            .append(" = x")
            .append(std::to_string(i - 1))
            .append(" + 1\n");
    program += "y = x999 - 1015\nend\nsolve(y, x0)\nx0\n";
    EXPECT_THAT(run(program), HasSubstr("x0\n        = 16 \n"));
}

TEST_F(solving, an_open_block_does_not_count_as_a_block) {
    EXPECT_THAT(run("begin\nx = 1\nsolve(x, x)\n"), HasSubstr("cannot be called within"));
    EXPECT_THAT(run("x = 1\nsolve(x, x)\n"), HasSubstr("ERROR:  Function not defined.\n"));
}

// Repeated replay allocates no memory, whatever the depth of its expressions.
TEST_F(solving, an_evaluation_allocates_nothing) {
    run("x = 1"); // resets the state of earlier runs
    work_text err;
    const char* const text =
        "begin\nx = 3 m\nv = [x, 2*x, 3*x]\n"
        "y = (1 m + (1 m + (1 m + (1 m + (1 m + (1 m + (1 m + (1 m + (1 m + (1 m + x))))))))))\n"
        "z = sqrt(dot(v, v)) + atan(x/y)*(1 m) + Number(y, ft)*x\nend\n";
    // The end of a run would remove the block.
    work_text out;
    run_lines("", cursor(text), out.str, err.str);
    ASSERT_TRUE(is_block_closed()) << out.view();
    allocate_solver_binding(1, 2);
    record_independent(0, {static_cast<std::int32_t>(find_var("x")->number), 0});
    record_dependent(0, {static_cast<std::int32_t>(find_var("y")->number), 0});
    record_dependent(1, {static_cast<std::int32_t>(find_var("z")->number), 0});
    double y[2] = {};
    double x = 1.0;
    bound_block().evaluate_function(&x, y, err.str);
    const std::size_t before = allocations();
    for (int i = 0; i < 1000; ++i) {
        x += 0.5;
        bound_block().evaluate_function(&x, y, err.str);
    }
    EXPECT_EQ(allocations() - before, 0U);
    EXPECT_EQ(err.view(), "");
    EXPECT_EQ(y[0], 511.0);
}

struct search_cost {
    std::size_t allocations;
    double evaluations;
};

// A search on the block from a start value of a, counted by the block itself.
search_cost cost_of(double start, void (*search)(bound_function&, text_str*&)) {
    run("1"); // resets the state of earlier runs
    work_text err;
    work_text out;
    run_lines("",
              cursor("n = 0\nbegin\nn = n + 1\na = 2\nb = 1\ny = (a - 5)^2 + (b - a^2)^2 + 1\n"
                     "z = a^2 + a - 3\nend\n"),
              out.str, err.str);
    const bool is_root = search == solve_one_dim;
    find_var("a")->value.comp[0] = start;
    allocate_solver_binding(is_root ? 1 : 2, 1);
    record_independent(0, {static_cast<std::int32_t>(find_var("a")->number), 0});
    if (!is_root)
        record_independent(1, {static_cast<std::int32_t>(find_var("b")->number), 0});
    record_dependent(0, {static_cast<std::int32_t>(find_var(is_root ? "z" : "y")->number), 0});
    const std::size_t before = allocations();
    search(bound_block(), err.str);
    const std::size_t after = allocations();
    EXPECT_EQ(err.view(), "");
    return {after - before, find_var("n")->value.comp[0]};
}

TEST_F(solving, a_method_allocates_by_the_call_and_not_by_the_evaluation) {
    EXPECT_EQ(cost_of(2.0, solve_one_dim).allocations, 0U);
    const search_cost near = cost_of(4.0, minimise);
    const search_cost far = cost_of(-300.0, minimise);
    EXPECT_NE(far.evaluations, near.evaluations);
    EXPECT_EQ(far.allocations, near.allocations);
}

} // namespace
