#pragma once

// A minimum in one dimension: bracketing by golden-section steps with parabolic extrapolation, then Brent's
// method. The coordinate is the function's only variable, or the position on a line in the space of its
// variables.

#include "base/numeric_utilities.h"
#include "numerics/solve/bound_function.h"

namespace metrify {

/// The function, and the line searched. Base, direction and point are indexed from 1.
struct line_search_state {
    line_search_state(bound_function& searched, long dimensions)
        : function(searched), dimension(dimensions), base(dvector(1, dimensions)),
          direction(dvector(1, dimensions)), point(dvector(1, dimensions)) {}

    bound_function& function;
    bool along_line = false; // else the coordinate is the function's variable
    long dimension;
    offset_vector<double> base;
    offset_vector<double> direction;
    offset_vector<double> point; // evaluated last
};

/// The function's value at base + t direction.
double f1dim(line_search_state& line, double t, text_str*& err);

/// Three points with their values; the lowest, b, is between a and c.
struct minimum_bracket {
    double ax = 0.0, bx = 0.0, cx = 0.0;
    double fa = 0.0, fb = 0.0, fc = 0.0;
};

/// Brackets a minimum downhill from ax and bx, in at most limit passes. False if there is none. Intentional:
/// of the failed evaluations only the third leaves its message.
bool mnbrak(line_search_state& line, minimum_bracket& bracket, int limit, text_str*& err);

/// Refines the bracket to the relative tolerance and returns the value at the minimum, whose position is
/// xmin. Returns 0 for a failed evaluation, with xmin unchanged.
double brent(line_search_state& line, const minimum_bracket& bracket, double tol, int limit, double& xmin,
             text_str*& err);

} // namespace metrify
