#pragma once

// A common root of as many functions as there are numbers: Newton's method and Broyden's, both made globally
// convergent by a search along the step. A flag `check` says how a method has ended: 1 is a good result, 0 a
// failed one. Vectors count from 1.

#include "numerics/linear/linear_equations.h"
#include "numerics/solve/bound_function.h"

#include <cstdint>

namespace metrify {

/// Searches from the function's start numbers with one of the two methods.
void solve_multi_dim(bound_function& f, std::uint32_t& check, bool use_broydn, text_str*& err);

/// Newton's method with a fresh Jacobian in each pass.
void newt(bound_function& f, double_vector& x, long n, std::uint32_t& check, text_str*& err);

/// Broyden's method: the Jacobian's factors are updated by what the last step has shown, and formed anew
/// where that no longer helps.
void broydn(bound_function& f, double_vector& x, long n, std::uint32_t& check, text_str*& err);

} // namespace metrify
