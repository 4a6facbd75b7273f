// The connection of the solving functions with the variables.

#include "machine/solver_binding.h"

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

} // namespace
