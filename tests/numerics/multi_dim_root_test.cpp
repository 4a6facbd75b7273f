// Newton's and Broyden's methods and their common parts, on plain functions.

#include "base/interruption.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/root_step.h"
#include "tests/numerics/plain_function.h"
#include "tests/numerics/plain_methods.h"

#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace {

using namespace metrify;
using namespace metrify::test;

struct outcome {
    std::uint32_t check;
    std::string text;
};

outcome solve(plain_function& f, bool use_broydn) {
    work_text err;
    outcome result = {7, {}};
    solve_multi_dim(f, result.check, use_broydn, err.str);
    result.text = err.view();
    return result;
}

double_vector to_vector(const point& x) {
    double_vector v = dvector(1, static_cast<long>(x.size()));
    for (std::size_t i = 0; i < x.size(); ++i)
        v[static_cast<long>(i) + 1] = x[i];
    return v;
}

plain_function rosenbrock() {
    return {{-1.2, 1.0}, 2, [](const point& x) { return point{10.0 * (x[1] - x[0] * x[0]), 1.0 - x[0]}; }};
}

TEST(solve_multi_dim, refuses_one_number) {
    plain_function f = of_one(1.0, [](double x) { return x; });
    const outcome result = solve(f, true);
    EXPECT_EQ(result.text, "ERROR: Doing multidimensional root finding in 1D routine.\n");
    EXPECT_EQ(result.check, 0U);
    EXPECT_EQ(f.evaluations(), 0U);
}

TEST(solve_multi_dim, refuses_counts_that_differ) {
    plain_function f({1.0, 2.0}, 3, [](const point&) { return point{1, 2, 3}; });
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "ERROR: Root finding must have same number of indpendent and dependent vars.\n");
    EXPECT_EQ(result.check, 0U);
}

TEST(solve_multi_dim, both_methods_find_a_root) {
    for (const bool use_broydn : {true, false}) {
        plain_function f = rosenbrock();
        const outcome result = solve(f, use_broydn);
        EXPECT_EQ(result.text, "");
        EXPECT_EQ(result.check, 1U);
        EXPECT_NEAR(f.last(0), 1.0, 1e-6);
        EXPECT_NEAR(f.last(1), 1.0, 1e-6);
    }
}

TEST(solve_multi_dim, a_root_at_the_start_takes_one_evaluation) {
    for (const bool use_broydn : {true, false}) {
        plain_function f({3.0, 4.0}, 2, [](const point& x) { return point{x[0] - 3.0 + 9e-9, x[1] - 4.0}; });
        EXPECT_EQ(solve(f, use_broydn).check, 1U);
        EXPECT_EQ(f.evaluations(), 1U);
    }
}

TEST(solve_multi_dim, values_of_a_hundred_millionth_at_the_start_are_no_root) {
    for (const bool use_broydn : {true, false}) {
        for (const auto& [value, evaluations] : {std::pair(0.999e-8, 1U), {1.001e-8, 4U}}) {
            plain_function f({3.0, 4.0}, 2, [v = value](const point& x) {
                return point{x[0] - 3.0 + v, x[1] - 4.0};
            });
            EXPECT_EQ(solve(f, use_broydn).check, 1U);
            EXPECT_EQ(f.evaluations(), evaluations) << value;
        }
    }
}

TEST(solve_multi_dim, values_of_less_than_a_millionth_end_a_method) {
    // The first step, after one evaluation at the start and two for the Jacobian, ends at the origin.
    for (const bool use_broydn : {true, false}) {
        for (const double value : {0.999e-6, 1.001e-6}) {
            plain_function f({1.0, 1.0}, 2, [value](const point& x) {
                return x[0] < 0.5 && x[1] < 0.5 ? point{0.0, value} : point{x[0], x[1]};
            });
            solve(f, use_broydn);
            EXPECT_EQ(f.evaluations() == 4U, value < 1e-6) << value;
        }
    }
}

TEST(solve_multi_dim, values_that_are_no_numbers_count_as_zeros) {
    plain_function f({3.0, 4.0}, 2, [](const point&) { return point{NAN, NAN}; });
    EXPECT_EQ(solve(f, true).check, 1U);
    EXPECT_EQ(f.evaluations(), 1U);
}

TEST(solve_multi_dim, a_first_evaluation_that_fails_leaves_its_text_and_a_good_check) {
    for (const bool use_broydn : {true, false}) {
        plain_function f({3.0, 4.0}, 2, [](const point&) { return point(); });
        const outcome result = solve(f, use_broydn);
        EXPECT_EQ(result.text, "evaluation failed");
        EXPECT_EQ(result.check, 1U);
    }
}

TEST(solve_multi_dim, a_failure_in_the_jacobian_ends_the_method) {
    for (const bool use_broydn : {true, false}) {
        plain_function f({3.0, 4.0}, 2, [](const point& x) {
            return x[1] != 4.0 ? point() : point{x[0], x[1]};
        });
        const outcome result = solve(f, use_broydn);
        EXPECT_EQ(result.text, "evaluation failed");
        EXPECT_EQ(result.check, 0U);
        EXPECT_EQ(f.evaluations(), 3U);
    }
}

TEST(broydn, reports_a_singular_jacobian) {
    plain_function f({10.0, 10.0}, 2, [](const point& x) { return point{x[0] - 3.0, 2.0 * x[0] - 6.0}; });
    const outcome result = solve(f, true);
    EXPECT_EQ(result.text, "ERROR:  Singular Jacobian in brodyn.\n");
    EXPECT_EQ(result.check, 0U);
    EXPECT_EQ(f.evaluations(), 3U);
}

TEST(broydn, reports_factors_that_an_update_makes_singular) {
    // Around the start the values are linear and their differences exact. The first step ends at the origin,
    // whose values are such that the update clears the first row of the factors.
    plain_function f({1.0, 1.0}, 2, [](const point& x) {
        return x[0] == 0.0 && x[1] == 0.0 ? point{2.0, 0.0} : point{x[0], 2.0 * x[1]};
    });
    const outcome result = solve(f, true);
    EXPECT_EQ(result.text, "ERROR:  r singular in broydn.\n");
    EXPECT_EQ(result.check, 0U);
    EXPECT_EQ(f.evaluations(), 4U);
}

TEST(newt, continues_after_a_column_of_zeros) {
    plain_function f({10.0, 10.0}, 2, [](const point& x) { return point{x[0] - 3.0, 2.0 * x[0] - 6.0}; });
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(result.check, 1U);
    EXPECT_EQ(f.last(0), 3.0);
    EXPECT_EQ(f.last(1), 10.0);
}

TEST(newt, reports_a_row_of_zeros) {
    plain_function f({10.0, 10.0}, 2, [](const point& x) { return point{x[0] - x[1] + 1.0, 5.0}; });
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "ERROR:  Singular matrix in routine ludcmp.\n");
    EXPECT_EQ(result.check, 0U);
}

// At this start the differences that form the Jacobian are exact. The two values grow against each other, so
// the sum of squares is flat there though no value is 0.
constexpr double exact_start = 1048576.0;

point opposed(const point& x, double tilt) {
    const double moved = (x[0] - exact_start) + (x[1] - exact_start);
    return {1.0 + moved, 1.0 - (1.0 - tilt) * moved};
}

// The same with large values everywhere except at the points of the Jacobian: every line search fails.
plain_function opposed_behind_a_wall(double tilt) {
    return {{exact_start, exact_start},
            2,
            [tilt](const point& x) {
                const bool is_near = std::fabs(x[0] - exact_start) + std::fabs(x[1] - exact_start) < 1.1;
                const bool is_on_axis = x[0] == exact_start || x[1] == exact_start;
                return is_near && is_on_axis ? opposed(x, tilt) : point{1000.0, 1000.0};
            }};
}

TEST(newt, fails_if_a_line_search_fails_on_flat_ground) {
    plain_function f = opposed_behind_a_wall(0.0);
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(result.check, 0U);
    EXPECT_NE(f.last(0), exact_start); // the last trial, although the vector is at the start again
}

TEST(newt, succeeds_if_a_line_search_fails_on_a_slope) {
    plain_function f = opposed_behind_a_wall(0.5);
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(result.check, 1U);
}

TEST(newt, takes_a_relative_gradient_of_a_hundred_millionth_for_flat_ground) {
    // The gradient at the start is the slope in both directions. It is multiplied by the size of the numbers
    // and divided by the half square sum of the large values, a million.
    constexpr double limit = 1e-8 * 1e6 / exact_start;
    for (const double part : {0.999, 1.001}) {
        plain_function f = opposed_behind_a_wall(part * limit);
        EXPECT_EQ(solve(f, false).check, part < 1.0 ? 0U : 1U);
    }
}

TEST(newt, ends_after_its_passes) {
    plain_function f({exact_start, exact_start}, 2, [](const point& x) { return opposed(x, 0.0); });
    const outcome result = solve(f, false);
    EXPECT_EQ(result.text, "ERROR:  MAXITS exceeded in newt\n");
    EXPECT_EQ(result.check, 0U);
}

TEST(broydn, ends_after_its_passes) {
    // The root moves with each evaluation.
    double shift = 0.0;
    plain_function f({1.0, 1.0}, 2, [&](const point& x) {
        shift += 1.0;
        return point{(x[0] + 1000.0 - shift) * 1e-3 + 5.0 / shift, (x[1] + 3000.0 - 2.0 * shift) * 1e-3};
    });
    const outcome result = solve(f, true);
    EXPECT_EQ(result.text, "ERROR:  MAXITS exceeded in broydn.\n");
    EXPECT_EQ(result.check, 0U);
}

TEST(fdjac, steps_by_a_millionth_of_each_number) {
    plain_function f({2.0, 0.0}, 2, [](const point& x) { return point{3.0 * x[0] + x[1], x[0] * x[1]}; });
    work_text err;
    double_vector x = to_vector({2.0, 0.0});
    const double_vector fvec = to_vector({6.0, 0.0});
    double_matrix df = dmatrix(1, 2, 1, 2);
    fdjac(f, 2, x, fvec, df, err.str);
    EXPECT_EQ(f.points[0][0], 2.0 + 2e-6);
    EXPECT_EQ(f.points[1][1], 1e-6);
    EXPECT_NEAR(df(1, 1), 3.0, 1e-9);
    EXPECT_NEAR(df(1, 2), 1.0, 1e-9);
    EXPECT_EQ(df(2, 1), 0.0);
    EXPECT_NEAR(df(2, 2), 2.0, 1e-9);
    EXPECT_EQ(x[1], 2.0);
    EXPECT_EQ(x[2], 0.0);
}

TEST(fdjac, leaves_a_number_moved_where_its_evaluation_fails) {
    plain_function f({2.0, 3.0}, 2, [](const point& x) { return x[1] != 3.0 ? point() : point{1.0, 1.0}; });
    work_text err;
    double_vector x = to_vector({2.0, 3.0});
    const double_vector fvec = to_vector({1.0, 1.0});
    double_matrix df = dmatrix(1, 2, 1, 2);
    fdjac(f, 2, x, fvec, df, err.str);
    EXPECT_EQ(x[1], 2.0);
    EXPECT_EQ(x[2], 3.0 + 1e-6 * 3.0);
}

struct line_search {
    double_vector x = dvector(1, 1), p = dvector(1, 1), fvec = dvector(1, 1);
    double f = 0.0;
    std::uint32_t check = 7;
    std::string text;
};

line_search search(plain_function& function, double xold, double fold, double g, double p, double stpmax) {
    line_search result;
    work_text err;
    result.p[1] = p;
    lnsrch(function, 1, to_vector({xold}), fold, to_vector({g}), result.p, result.x, result.f, stpmax,
           result.check, result.fvec, err.str);
    result.text = err.view();
    return result;
}

TEST(lnsrch, takes_the_whole_step_where_it_is_good) {
    plain_function f = of_one(0.0, [](double x) { return x - 2.0; });
    const line_search result = search(f, 0.0, 2.0, -2.0, 2.0, 100.0);
    EXPECT_EQ(result.check, 1U);
    EXPECT_EQ(result.x[1], 2.0);
    EXPECT_EQ(result.f, 0.0);
    EXPECT_EQ(f.evaluations(), 1U);
}

TEST(lnsrch, requires_a_ten_thousandth_of_the_decrease_that_the_slope_predicts) {
    // The half square sum is 2 at the start, and the slope along the step -4.
    for (const auto& [half_squares, evaluations] : {std::pair(1.999599, 1U), {1.999601, 2U}}) {
        plain_function f =
            of_one(0.0, [h = half_squares](double x) { return x == 2.0 ? std::sqrt(2.0 * h) : 0.0; });
        EXPECT_EQ(search(f, 0.0, 2.0, -2.0, 2.0, 100.0).check, 1U);
        EXPECT_EQ(f.evaluations(), evaluations);
    }
}

TEST(lnsrch, shortens_a_step_beyond_the_longest) {
    plain_function f = of_one(0.0, [](double x) { return x - 2.0; });
    EXPECT_EQ(search(f, 0.0, 2.0, -2.0, 8.0, 2.0).x[1], 2.0);
}

TEST(lnsrch, backtracks_by_the_parabola_first) {
    // f(0) = 1/2, slope -1, f(1) = 1/2 (3)^2 = 4.5: the parabola has its minimum at 1 / (2 (4.5 - 0.5 + 1)) =
    // 0.1
    plain_function f = of_one(0.0, [](double x) { return x == 1.0 ? 3.0 : 0.0; });
    const line_search result = search(f, 0.0, 0.5, -1.0, 1.0, 100.0);
    EXPECT_EQ(result.x[1], 0.1);
    EXPECT_EQ(f.evaluations(), 2U);
}

TEST(lnsrch, backtracks_to_a_tenth_at_least) {
    plain_function f = of_one(0.0, [](double x) { return x == 1.0 ? 1000.0 : 0.0; });
    EXPECT_EQ(search(f, 0.0, 0.5, -1.0, 1.0, 100.0).x[1], 0.1);
}

TEST(lnsrch, gives_up_at_the_least_step_with_the_values_of_the_last_trial) {
    plain_function f = of_one(0.0, [](double) { return 10.0; });
    const line_search result = search(f, 5.0, 0.5, -1.0, 1.0, 100.0);
    EXPECT_EQ(result.check, 0U);
    EXPECT_EQ(result.x[1], 5.0);
    EXPECT_EQ(result.fvec[1], 10.0);
    EXPECT_EQ(result.f, 50.0);
    EXPECT_LT(f.last() - 5.0, 5e-7); // 1e-7 of the larger of 5 and 1
}

TEST(lnsrch, ends_where_no_step_is_the_longest) {
    plain_function f = of_one(0.0, [](double) { return 10.0; });
    const line_search result = search(f, 0.0, 0.5, -1.0, INFINITY, INFINITY);
    EXPECT_EQ(result.check, 0U);
    EXPECT_LT(f.evaluations(), 400U);
}

TEST(lnsrch, stops_at_a_failed_evaluation) {
    plain_function f = of_one_in_places(0.0, [](double) { return fails_here; });
    const line_search result = search(f, 0.0, 0.5, -1.0, 1.0, 100.0);
    EXPECT_EQ(result.text, "evaluation failed");
    EXPECT_EQ(f.evaluations(), 1U);
}

TEST(lnsrch, backtracks_by_a_parabola_where_the_cubic_has_no_third_power) {
    // The half squares at the start, with the slope -1, at 1 and at 0.1 are 0.5 - a + 20.1501805 a^2, to the
    // last digit of what is computed. The parabola has its minimum at 1 / (2 * 20.1501805), below the tenth
    // that the first backtrack takes at least.
    plain_function f = of_one(0.0, [](double x) {
        return x == 1.0 ? 6.269 : x == 0.1 ? 1.0968152123306825 : 0.0;
    });
    const line_search result = search(f, 0.0, 0.5, -1.0, 1.0, 100.0);
    EXPECT_NEAR(result.x[1], 0.0248136735053068, 1e-16);
    EXPECT_EQ(f.evaluations(), 3U);
}

TEST(lnsrch, reports_rounding_in_the_cubic) {
    // A slope that is no descent, 1, and half squares of 0.9 at 1 and 25 at 5: the cubic through these has no
    // extreme.
    plain_function f = of_one(0.0, [](double x) { return std::sqrt(x == 1.0 ? 1.8 : 50.0); });
    const line_search result = search(f, 0.0, 0.0, 1.0, 1.0, 100.0);
    EXPECT_EQ(result.text, "ERROR:  Roundoff problem in lnsrch.\n");
}

// The second implementation of the method needs as many evaluations to the same point.
void expect_counts(const point& start, const system_function& formula) {
    for (const bool use_broydn : {true, false}) {
        plain_function f(start, start.size(), formula);
        const outcome result = solve(f, use_broydn);
        EXPECT_EQ(result.text, "");
        numbers x = start;
        bool good = false;
        const int count = use_broydn ? plain_broydn(formula, x, good) : plain_newt(formula, x, good);
        EXPECT_EQ(f.evaluations(), static_cast<std::size_t>(count));
        EXPECT_EQ(result.check, good ? 1U : 0U);
        for (std::size_t i = 0; i < x.size(); ++i)
            EXPECT_NEAR(f.last(i), x[i], 1e-6);
    }
}

TEST(solve_multi_dim, takes_the_evaluations_of_the_plain_methods) {
    expect_counts(
        {1.0, 1.0},
        [](const numbers& x) {
            return numbers{x[0] * x[0] + x[1] * x[1] - 4.0, x[1] - x[0] * x[0] + 1.0};
        });
    expect_counts(
        {-1.2, 1.0},
        [](const numbers& x) {
            return numbers{10.0 * (x[1] - x[0] * x[0]), 1.0 - x[0]};
        });
    expect_counts({2.0, 3.0, 4.0}, [](const numbers& x) {
        return numbers{x[0] * x[1] * x[2] - 6.0, x[0] + x[1] + x[2] - 6.0,
                       std::exp(x[0]) - x[2] * x[2] + 1.0};
    });
}

// Each column of the factors, and each reflection that is unfolded.
TEST(broydn, polls_a_request_for_each_column_of_a_large_system) {
    interruption stop;
    const interruption_scope obeys(stop);
    plain_function f(point(64, 3.0), 64, [](const point& x) {
        point y = x;
        for (double& number : y)
            number -= 1.0;
        return y;
    });
    EXPECT_EQ(solve(f, true).text, "");
    EXPECT_EQ(obeys.polls(), 63 + 63);
}

} // namespace
