#pragma once

// What Newton's and Broyden's methods share: the Jacobian by finite differences, the line search, and the
// convergence tests.

#include "numerics/linear/linear_equations.h"
#include "numerics/solve/bound_function.h"

#include <cstdint>

namespace metrify {

// The constants have the names of the published routines, here and in the sources.
constexpr int MAXITS = 200;
/// The start point is a root if no value is larger.
constexpr double TOLF_AT_START = 1e-8;
constexpr double TOLF = 1e-6;
constexpr double TOLMIN = 1e-8;
constexpr double TOLX = 1e-7;

/// Half the sum of the squares of the values, which the methods reduce.
double half_square_sum(vector_view<const double> fvec, long n);

/// The largest magnitude; a not-a-number counts as 0.
double largest_magnitude(vector_view<const double> fvec, long n);

/// The longest step allowed from x.
double longest_step(vector_view<const double> x, long n);

/// The largest relative change of a variable.
double relative_change(vector_view<const double> x, vector_view<const double> xold, long n);

/// The largest component of the gradient of the sum of squares, relative to the variable and the sum.
double relative_gradient(vector_view<const double> g, vector_view<const double> x, double f, long n);

/// df(i, j) is the derivative of value i with respect to x[j], by a forward difference; fvec holds the values
/// at x. Intentional: a failed evaluation leaves x[j] displaced.
void fdjac(bound_function& function, long n, vector_view<double> x, vector_view<const double> fvec,
           matrix_view<double> df, text_str*& err);

/// Line search along the step p from xold, where the half square sum is fold and its gradient g, until the
/// sum has decreased sufficiently. Returns x, the values fvec there and f. On failure check is 0, x is xold,
/// and f and fvec are those of the last trial.
void lnsrch(bound_function& function, long n, vector_view<const double> xold, double fold,
            vector_view<const double> g, vector_view<double> p, vector_view<double> x, double& f,
            double stpmax, std::uint32_t& check, vector_view<double> fvec, text_str*& err);

} // namespace metrify
