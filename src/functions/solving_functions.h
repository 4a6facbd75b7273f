#pragma once

// The built-ins that work on the function block: solve, fmin, fmax and func. None of them gives a number.
// They change the independent variables, run the block's instructions repeatedly, and record that a report is
// due: the block's listing with the values found.

#include "functions/builtin.h"

namespace metrify {

/// What is required before the number of arguments is tested: a closed block, and no open definition. If
/// true, the variables have been kept, so that an interrupted statement can be undone. If false, one cleared
/// value has taken the place of the count arguments.
bool can_run_block(std::string_view name, std::int32_t count, compile_ctx& ctx, text_str*& err);

/// solve(dep1, ..., depN, ind1, ..., indN): the independents that make all dependents 0.
void run_solve(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// fmin(dep, ind1, ..., indK): the independents that minimise the dependent.
void run_fmin(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// fmax(dep, ind1, ..., indK): likewise, maximise.
void run_fmax(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// func(var1, value1, ...): gives variables their values, units included.
void run_func(std::int32_t count, compile_ctx& ctx, text_str*& err);

struct solving_function {
    function_facts about;
    builtin run;
};

// clang-format off
inline constexpr solving_function solving_functions[] = {
    {{79, family::solving, "solve", 2, "y, ..., x, ...", "Finds the x, ... at which the function block makes the y, ... vanish",
      "names of variables, as many x as y", help::report, "the search starts at the values of x, ...", "begin\nx = 2 m\ny = x^2 - 9 m^2\nend\nsolve(y, x)", "x = 3 m", {.mode = args_variables}},
     run_solve},
    {{46, family::solving, "fmin", 2, "y, x, ...", "Finds the x, ... at which the function block makes y least",
      help::variables, help::report, "the search starts at the values of x, ...", "begin\nx = 1 m\ny = (x - 3 m)^2\nend\nfmin(y, x)", "x = 3 m", {.mode = args_variables, .name_in_count = "min"}},
     run_fmin},
    {{45, family::solving, "fmax", 2, "y, x, ...", "Finds the x, ... at which the function block makes y greatest",
      help::variables, help::report, "the search starts at the values of x, ...", "begin\nx = 1 m\ny = 4 m^2 - (x - 3 m)^2\nend\nfmax(y, x)", "x = 3 m", {.mode = args_variables, .name_in_count = "max"}},
     run_fmax},
    {{47, family::solving, "func", 0, "x, value, ...", "Sets the x, ... to the values, units included, and runs the function block",
      "names of variables, each with its value", help::report, "any values", "begin\nx = 2 m\ny = x^2 - 9 m^2\nend\nfunc(x, 5 m)", "y = 16 m^2", {.mode = args_variable_value}},
     run_func},
};
// clang-format on

} // namespace metrify
