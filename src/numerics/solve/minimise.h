#pragma once

// A minimum of a function without derivatives: of one variable by bracketing and Brent's method, of several
// by Powell's direction sets. The function keeps the point of its last evaluation, which is near the minimum
// but not the best point.

#include "numerics/solve/line_minimum.h"

namespace metrify {

/// Searches from the function's start point. A failure leaves a message in err.
void minimise(bound_function& f, text_str*& err);

/// Powell's method from p, with the directions in the columns of xi; all are indexed from 1. On return p is
/// the best point, fret its value and iter the number of iterations.
void powell(bound_function& f, offset_vector<double>& p, offset_matrix<double>& xi, long n, double ftol,
            int& iter, double& fret, text_str*& err);

/// Moves p to the minimum along the direction xi and makes xi the step taken. If no minimum is found the
/// step is 0. fret is the value there.
void linmin(line_search_state& line, offset_vector<double>& p, offset_vector<double>& xi, long n,
            double& fret, text_str*& err);

} // namespace metrify
