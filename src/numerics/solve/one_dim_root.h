#pragma once

// A root of a function of one variable: an outward search from the start value for a change of sign, then
// Ridders' method inside the bracket. No result is returned: the root is the point of the last evaluation.

#include "numerics/solve/bound_function.h"

namespace metrify {

/// Two points between which the function changes its sign, their midpoint, and the values there. The points
/// may be in either order.
struct root_bracket {
    double a = 0.0, b = 0.0, m = 0.0;
    double fa = 0.0, fb = 0.0, fm = 0.0;
};

/// Evaluates the function last at its root, or leaves a message in err.
void solve_one_dim(bound_function& f, text_str*& err);

/// Searches from x0 in both directions, first by dx, then by steps that grow by the factor growth, at most
/// Max_it times. True if the function changes its sign; the low side is tested first.
bool bi_bracket_zero(bound_function& f, double x0, double dx, int Max_it, double growth, root_bracket& found,
                     text_str*& err);

/// Ridders' method. Returns the root within an absolute tolerance; 0 after a failed evaluation or if there is
/// no change of sign.
double zriddr(bound_function& f, const root_bracket& bracket, double tolerance, text_str*& err);

} // namespace metrify
