#pragma once

// The built-ins that work on the function block: solve, fmin, fmax and func. None of them gives a number.
// They change the independent variables, run the block's instructions over and over, and leave word that the
// block's listing is to be written with what they have found.

#include "functions/builtin.h"

namespace metrify {

// These test the number of their arguments themselves, behind their other conditions.

/// solve(dep1, ..., depN, ind1, ..., indN): the independents that make all dependents 0.
void run_solve(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// fmin(dep, ind1, ..., indK): the independents that make the dependent smallest.
void run_fmin(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// fmax(dep, ind1, ..., indK): largest.
void run_fmax(std::int32_t count, compile_ctx& ctx, text_str*& err);
/// func(var1, value1, ...): gives variables their values, units included.
void run_func(std::int32_t count, compile_ctx& ctx, text_str*& err);

} // namespace metrify
