// The connection of the solving functions with the variables.

#include "base/interruption.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(solver_binding, reports_an_independent_variable_that_does_not_exist) {
    free_all_vars();
    allocate_solver_binding(1, 0);
    record_independent(0, {77, 0});
    work_text err;
    restore_start_values(err.str);
    EXPECT_EQ(err.view(), "ERROR:  Variable number 77 undefined.\n");
    str_clear(&err.str);
    const double x = 1.0;
    double y = 0.0;
    bound_block().evaluate_function(&x, &y, err.str);
    EXPECT_EQ(err.view(), "ERROR:  Variable number 77 undefined.\n");
    teardown_solver_binding();
}

TEST(solver_binding, evaluates_nothing_in_an_interrupted_run) {
    free_all_vars();
    const var_entry& variable = add_var("x", {});
    allocate_solver_binding(1, 1);
    record_independent(0, {static_cast<std::int32_t>(variable.number), 0});
    record_dependent(0, {static_cast<std::int32_t>(variable.number), 0});
    interruption stop;
    stop.request();
    const interruption_scope obeys(stop);
    work_text err;
    const double x = 1.0;
    double y = 5.0;
    bound_block().evaluate_function(&x, &y, err.str);
    EXPECT_EQ(err.view(), "ERROR: interrupted.\n");
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(variable.value.comp[0], 0.0) << "the variable is not set";
    teardown_solver_binding();
}

} // namespace
