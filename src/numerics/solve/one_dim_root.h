#pragma once

// A root of a function of one number: a walk outward from the start value until the function changes its
// sign, then Ridders' method inside the bracket. Nothing is handed back: the root is where the function has
// been evaluated last.

#include "numerics/solve/bound_function.h"

namespace metrify {

/// Two points between which the function changes its sign, the point between them, and the values there.
/// The points need not be in order.
struct root_bracket {
    double a = 0.0, b = 0.0, m = 0.0;
    double fa = 0.0, fb = 0.0, fm = 0.0;
};

/// Leaves the function evaluated at its root, or a message in err.
void solve_one_dim(bound_function& f, text_str*& err);

/// Walks from x0 to both sides, first by dx, then by steps that grow by the factor growth, at most Max_it
/// times. True if the function changes its sign; the low side goes first.
bool bi_bracket_zero(bound_function& f, double x0, double dx, int Max_it, double growth, root_bracket& found,
                     text_str*& err);

/// Ridders' method. Gives the root within an absolute tolerance; 0 after a failed evaluation or for what is
/// no bracket.
double zriddr(bound_function& f, const root_bracket& bracket, double tolerance, text_str*& err);

} // namespace metrify
