#pragma once

// A minimum along one number: bracketing by golden steps with parabolic leaps, then Brent's method. The
// number is the function's only one, or the place on a line through the space of its several numbers.

#include "base/numeric_utilities.h"
#include "numerics/solve/bound_function.h"

namespace metrify {

/// What is searched. Base, direction and point count from 1.
struct line_search_state {
    line_search_state(bound_function& searched, long dimensions)
        : function(searched), dimension(dimensions), base(dvector(1, dimensions)),
          direction(dvector(1, dimensions)), point(dvector(1, dimensions)) {}

    bound_function& function;
    bool along_line = false; // else the number is the function's own
    long dimension;
    offset_vector<double> base;
    offset_vector<double> direction;
    offset_vector<double> point; // the one evaluated last
};

/// The function's value at base + t direction.
double f1dim(line_search_state& line, double t, text_str*& err);

/// Three points with the values there; b is the lowest one between a and c.
struct minimum_bracket {
    double ax = 0.0, bx = 0.0, cx = 0.0;
    double fa = 0.0, fb = 0.0, fc = 0.0;
};

/// Brackets a minimum downhill from ax and bx, in at most limit passes. Unless true there is none; a failed
/// evaluation leaves a message only where it is the third one.
bool mnbrak(line_search_state& line, minimum_bracket& bracket, int limit, text_str*& err);

/// Closes in on the minimum and gives its value; xmin is its place within the relative tolerance. A failed
/// evaluation gives 0, with xmin as it was.
double brent(line_search_state& line, const minimum_bracket& bracket, double tol, int limit, double& xmin,
             text_str*& err);

} // namespace metrify
