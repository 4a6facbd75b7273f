// The factorisations used by the root finders.

#include "base/interruption.h"
#include "numerics/linear/linear_equations.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace metrify;

using rows = std::vector<std::vector<double>>;

double_matrix to_matrix(const rows& from) {
    const long n = static_cast<long>(from.size());
    double_matrix m = dmatrix(1, n, 1, n);
    for (long i = 1; i <= n; ++i)
        for (long j = 1; j <= n; ++j)
            m(i, j) = from[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(j - 1)];
    return m;
}

double_vector to_vector(const std::vector<double>& from) {
    double_vector v = dvector(1, static_cast<long>(from.size()));
    for (std::size_t i = 0; i < from.size(); ++i)
        v[static_cast<long>(i) + 1] = from[i];
    return v;
}

// The matrix that the factors represent: Q times R.
double product(const double_matrix& qt, const double_matrix& r, long n, long i, long j) {
    double sum = 0.0;
    for (long k = 1; k <= n; ++k)
        sum += qt(k, i) * (k <= j ? r(k, j) : 0.0);
    return sum;
}

TEST(ludcmp, solves_with_lubksb) {
    double_matrix a = to_matrix({{0, 2, 1}, {4, 1, -1}, {-2, 3, 5}});
    double_vector b = to_vector({7, 3, 19}); // for x = 1, 2, 3
    int_vector indx = ivector(1, 3);
    double d = 0.0;
    work_text err;
    ludcmp(a, 3, indx, d, err.str);
    EXPECT_EQ(err.view(), "");
    lubksb(a, 3, indx, b);
    for (long i = 1; i <= 3; ++i)
        EXPECT_NEAR(b[i], static_cast<double>(i), 1e-14);
    EXPECT_NEAR(d * a(1, 1) * a(2, 2) * a(3, 3), 0 * 0 + 2 * -(4 * 5 - 2) + 1 * (12 + 2), 1e-13);
}

TEST(ludcmp, reports_a_row_of_zeros) {
    double_matrix a = to_matrix({{1, 2}, {0, 0}});
    int_vector indx = ivector(1, 2);
    double d = 0.0;
    work_text err;
    ludcmp(a, 2, indx, d, err.str);
    EXPECT_EQ(err.view(), "ERROR:  Singular matrix in routine ludcmp.\n");
}

TEST(ludcmp, puts_a_tiny_number_in_the_place_of_a_zero_pivot) {
    double_matrix a = to_matrix({{1, 2}, {2, 4}});
    int_vector indx = ivector(1, 2);
    double d = 0.0;
    work_text err;
    ludcmp(a, 2, indx, d, err.str);
    EXPECT_EQ(err.view(), "");
    EXPECT_EQ(a(2, 2), 1e-20);
}

TEST(qrdcmp, reports_a_column_of_zeros) {
    for (const rows& from : {rows{{0, 1}, {0, 1}}, rows{{1, 0}, {1, 0}}}) {
        double_matrix a = to_matrix(from);
        double_vector c = dvector(1, 2);
        double_vector d = dvector(1, 2);
        bool sing = false;
        qrdcmp(a, 2, c, d, sing);
        EXPECT_TRUE(sing);
    }
}

TEST(qrdcmp, solves_with_the_reflections_and_rsolv) {
    double_matrix a = to_matrix({{3, 1}, {4, 2}});
    double_vector c = dvector(1, 2);
    double_vector d = dvector(1, 2);
    bool sing = true;
    qrdcmp(a, 2, c, d, sing);
    EXPECT_FALSE(sing);
    EXPECT_NEAR(d[1], -5.0, 1e-14);      // the length of the first column, against its sign
    double_vector b = to_vector({5, 8}); // for x = 1, 2
    const double tau = (a(1, 1) * b[1] + a(2, 1) * b[2]) / c[1];
    b[1] -= tau * a(1, 1);
    b[2] -= tau * a(2, 1);
    rsolv(a, 2, d, b);
    EXPECT_NEAR(b[1], 1.0, 1e-14);
    EXPECT_NEAR(b[2], 2.0, 1e-14);
}

TEST(qrupdt, updates_the_factors_of_a_matrix) {
    constexpr long n = 3;
    const rows from = {{2, 1, 0}, {0, 3, 1}, {0, 0, 4}};
    double_matrix r = to_matrix(from);
    double_matrix qt = to_matrix({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    const std::vector<double> u = {1, -2, 3};
    const std::vector<double> v = {4, 5, -6};
    double_vector changed = to_vector(u);
    qrupdt(r, qt, n, changed, to_vector(v));
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(product(qt, r, n, static_cast<long>(i) + 1, static_cast<long>(j) + 1),
                        from[i][j] + u[i] * v[j], 1e-13);
    }
}

TEST(qrupdt, passes_over_zeros_at_the_end) {
    double_matrix r = to_matrix({{2, 1}, {0, 3}});
    double_matrix qt = to_matrix({{1, 0}, {0, 1}});
    double_vector u = to_vector({1, 0});
    qrupdt(r, qt, 2, u, to_vector({5, 7}));
    EXPECT_EQ(r(1, 1), 7.0);
    EXPECT_EQ(r(1, 2), 8.0);
    EXPECT_EQ(r(2, 2), 3.0);
    EXPECT_EQ(qt(1, 1), 1.0);
}

TEST(rotate, turns_two_rows_by_the_angle_of_a_and_b) {
    double_matrix r = to_matrix({{3, 1}, {4, 2}});
    double_matrix qt = to_matrix({{1, 0}, {0, 1}});
    rotate(r, qt, 2, 1, 3.0, -4.0);
    EXPECT_NEAR(r(1, 1), 5.0, 1e-15);
    EXPECT_NEAR(r(2, 1), 0.0, 1e-15);
    EXPECT_NEAR(qt(1, 1), 0.6, 1e-15);
    rotate(r, qt, 2, 1, 0.0, -1.0); // a quarter turn
    EXPECT_NEAR(r(1, 1), 0.0, 1e-15);
    EXPECT_NEAR(r(2, 1), -5.0, 1e-15);
}

// ---- Large systems

double_matrix identity(long n) {
    double_matrix m = dmatrix(1, n, 1, n);
    for (long i = 1; i <= n; ++i)
        for (long j = 1; j <= n; ++j)
            m(i, j) = i == j ? 1.0 : 0.0;
    return m;
}

TEST(ludcmp, ends_with_a_message_in_an_interrupted_run_if_a_column_takes_4096_steps) {
    interruption stop;
    stop.request();
    const interruption_scope obeys(stop);
    for (const long n : {63L, 64L}) {
        double_matrix a = identity(n);
        int_vector indx = ivector(1, n);
        double d = 0.0;
        work_text err;
        ludcmp(a, n, indx, d, err.str);
        EXPECT_EQ(err.view(), n == 64 ? "ERROR: interrupted.\n" : "");
    }
    EXPECT_EQ(obeys.polls(), 1);
}

TEST(qrdcmp, has_no_factors_in_an_interrupted_run_if_a_column_takes_4096_steps) {
    interruption stop;
    stop.request();
    const interruption_scope obeys(stop);
    for (const long n : {63L, 64L}) {
        double_matrix a = identity(n);
        double_vector c = dvector(1, n);
        double_vector d = dvector(1, n);
        bool sing = n == 63;
        qrdcmp(a, n, c, d, sing);
        EXPECT_EQ(sing, n == 64);
    }
    EXPECT_EQ(obeys.polls(), 1);
}

} // namespace
