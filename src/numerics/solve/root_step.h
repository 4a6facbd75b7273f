#pragma once

// What Newton's and Broyden's methods share: where they stand, the Jacobian by differences, the search along
// a step, and the tests for an end.

#include "numerics/linear/linear_equations.h"
#include "numerics/solve/bound_function.h"

#include <cstdint>

namespace metrify {

// The constants have the names of the published routines, here and in the sources.
constexpr int MAXITS = 200;
/// The numbers are good from the start where no value is larger.
constexpr double TOLF_AT_START = 1e-8;
constexpr double TOLF = 1e-6;
constexpr double TOLMIN = 1e-8;
constexpr double TOLX = 1e-7;

/// Half the sum of the squares of the values, which the methods make smaller.
double half_square_sum(const double_vector& fvec, long n);

/// The largest magnitude; a not-a-number counts as 0.
double largest_magnitude(const double_vector& fvec, long n);

/// The longest step that a method may take from x.
double longest_step(const double_vector& x, long n);

/// The largest change of a number, relative to its size.
double relative_change(const double_vector& x, const double_vector& xold, long n);

/// The largest slope of the sum of squares, relative to numbers and sum.
double relative_gradient(const double_vector& g, const double_vector& x, double f, long n);

/// df(i, j) is the slope of the value i in the direction j, by a forward difference; fvec holds the values at
/// x. A failed evaluation leaves x[j] where it was moved to.
void fdjac(bound_function& function, long n, double_vector& x, const double_vector& fvec, double_matrix& df,
           text_str*& err);

/// Searches along the step p from xold, where the half square sum is fold and its gradient g, until the sum
/// has become enough smaller. Gives x, the values fvec there and f. A search that is given up sets check to
/// 0, puts x back to xold and leaves f and fvec as the last trial gave them.
void lnsrch(bound_function& function, long n, const double_vector& xold, double fold, const double_vector& g,
            double_vector& p, double_vector& x, double& f, double stpmax, std::uint32_t& check,
            double_vector& fvec, text_str*& err);

} // namespace metrify
