#pragma once

// A root of a system of equations by Newton's or Broyden's method, both globally convergent by a line search.
// The flag `check` is the result of a method: 1 for success, 0 for failure. Vectors are indexed from 1.

#include "numerics/linear/linear_equations.h"
#include "numerics/solve/bound_function.h"

#include <cstdint>

namespace metrify {

/// Searches from the function's start point with one of the two methods.
void solve_multi_dim(bound_function& f, std::uint32_t& check, bool use_broydn, text_str*& err);

/// Newton's method with a new Jacobian in each iteration.
void newt(bound_function& f, vector_view<double> x, long n, std::uint32_t& check, text_str*& err);

/// Broyden's method: the Jacobian's factors are updated after each step, and computed again if the line
/// search fails.
void broydn(bound_function& f, vector_view<double> x, long n, std::uint32_t& check, text_str*& err);

} // namespace metrify
