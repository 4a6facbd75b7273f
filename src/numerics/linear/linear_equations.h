#pragma once

// Square systems of linear equations by LU and QR factorisations. All indices are from 1 to n.

#include "base/numeric_utilities.h"
#include "base/text_str.h"

namespace metrify {

using double_matrix = offset_matrix<double>;
using double_vector = offset_vector<double>;
using int_vector = offset_vector<std::int32_t>;

// LU: Crout's method with implicit pivoting.

/// Replaces a by its factors; indx records the row exchanges, d is 1 or -1 for their parity. A row of
/// zeros leaves a message in err; a zero pivot is replaced by 1e-20.
void ludcmp(double_matrix& a, long n, int_vector& indx, double& d, text_str*& err);

/// Replaces b by the solution of a x = b; a and indx are those of ludcmp.
void lubksb(const double_matrix& a, long n, const int_vector& indx, double_vector& b);

// QR: Householder reflections, with an update for a change of rank one.

/// Replaces a by its factors: the upper triangle is R without its diagonal, which is d; the reflections are
/// below it and in c. sing is set if the diagonal has a zero; the factorisation is completed nevertheless.
void qrdcmp(double_matrix& a, long n, double_vector& c, double_vector& d, bool& sing);

/// Replaces r and qt, the transpose of Q, by the factors of Q (R + u v). Changes u.
void qrupdt(double_matrix& r, double_matrix& qt, long n, double_vector& u, const double_vector& v);

/// A rotation of the rows i and i + 1 of r and qt, by the angle whose cosine and sine are as a and -b.
void rotate(double_matrix& r, double_matrix& qt, long n, long i, double a, double b);

/// Replaces b by the solution of R x = b; a holds R above its diagonal d, which is not tested for zeros.
void rsolv(const double_matrix& a, long n, const double_vector& d, double_vector& b);

} // namespace metrify
