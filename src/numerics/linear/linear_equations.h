#pragma once

// Square systems of linear equations by LU and QR factorisations. All indices are from 1 to n.

#include "base/numeric_utilities.h"
#include "base/text_str.h"
#include "numerics/linear/views.h"

namespace metrify {

using double_matrix = offset_matrix<double>;
using double_vector = offset_vector<double>;
using int_vector = offset_vector<std::int32_t>;

// LU: Crout's method with implicit pivoting.

/// Replaces a by its factors; indx records the row exchanges, d is 1 or -1 for their parity. A row of
/// zeros leaves a message in err, and so does an interrupted run; a zero pivot is replaced by 1e-20.
void ludcmp(matrix_view<double> a, long n, vector_view<std::int32_t> indx, double& d, text_str*& err);

/// Replaces b by the solution of a x = b; a and indx are those of ludcmp.
void lubksb(matrix_view<const double> a, long n, vector_view<const std::int32_t> indx, vector_view<double> b);

// QR: Householder reflections, with an update for a change of rank one.

/// Replaces a by its factors: the upper triangle is R without its diagonal, which is d; the reflections are
/// below it and in c. sing is set if the diagonal has a zero; the factorisation is completed nevertheless,
/// unless the run is interrupted.
void qrdcmp(matrix_view<double> a, long n, vector_view<double> c, vector_view<double> d, bool& sing);

/// Replaces r and qt, the transpose of Q, by the factors of Q (R + u v). Changes u.
void qrupdt(matrix_view<double> r, matrix_view<double> qt, long n, vector_view<double> u,
            vector_view<const double> v);

/// A rotation of the rows i and i + 1 of r and qt, by the angle whose cosine and sine are as a and -b.
void rotate(matrix_view<double> r, matrix_view<double> qt, long n, long i, double a, double b);

/// Replaces b by the solution of R x = b; a holds R above its diagonal d, which is not tested for zeros.
void rsolv(matrix_view<const double> a, long n, vector_view<const double> d, vector_view<double> b);

} // namespace metrify
