// Bracketing, Brent's method and Powell's, on plain functions.

#include "numerics/solve/minimise.h"
#include "tests/numerics/plain_function.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using namespace metrify::test;

constexpr double gold = 1.618034;

std::string minimum(plain_function& f) {
    work_text err;
    minimise(f, err.str);
    return std::string(err.view());
}

struct bracketed {
    bool found;
    minimum_bracket at;
    std::string text;
};

bracketed bracket(plain_function& f, double ax, double bx, bool along_line, int limit = 100) {
    work_text err;
    line_search_state line(f, 1);
    line.along_line = along_line;
    line.direction[1] = 1.0;
    bracketed result = {false, {ax, bx}, {}};
    result.found = mnbrak(line, result.at, limit, err.str);
    result.text = err.view();
    return result;
}

TEST(mnbrak, goes_downhill_in_golden_steps) {
    plain_function f = of_one(0.0, [](double x) { return std::fabs(x - 0.5); });
    const bracketed result = bracket(f, 1.0, 2.0, false);
    EXPECT_TRUE(result.found);
    EXPECT_EQ(result.at.ax, 2.0);
    EXPECT_EQ(result.at.bx, 1.0);
    EXPECT_EQ(result.at.cx, 1.0 - gold);
    EXPECT_EQ(result.at.fa, 1.5);
    EXPECT_EQ(result.at.fb, 0.5);
    EXPECT_EQ(f.evaluations(), 3U);
}

TEST(mnbrak, divides_by_a_tiny_number_where_the_points_lie_on_a_line) {
    // The steps are so short that the parabola with that divisor has its extreme between the third point and
    // the farthest that is allowed: at step + (gold + 1) gold step^3 / (2 1e-20).
    constexpr double step = 1e-10;
    plain_function f = of_one(0.0, [](double x) { return -x; });
    bracket(f, 0.0, step, true, 1);
    const double u = step + (gold + 1.0) * gold * step * step * step / 2e-20;
    EXPECT_NEAR(f.points[3][0], u, 1e-12 * u);
    EXPECT_GT(u, step + gold * step);
    EXPECT_LT(u, step + 100.0 * gold * step);
}

TEST(mnbrak, leaps_a_hundred_times_the_last_distance_at_most) {
    plain_function f = of_one(0.0, [](double x) { return -x; });
    bracket(f, 0.0, 1.0, true, 1);
    EXPECT_DOUBLE_EQ(f.points[3][0], 1.0 + 100.0 * gold);
}

TEST(mnbrak, ends_at_once_on_a_flat_function) {
    plain_function f = of_one(0.0, [](double) { return 7.0; });
    EXPECT_TRUE(bracket(f, 5.0, 5.5, false).found);
    EXPECT_EQ(f.evaluations(), 3U);
}

TEST(mnbrak, clears_the_text_of_a_failure_but_for_the_third_point) {
    for (const std::size_t failing : {1U, 2U, 3U, 4U}) {
        std::size_t count = 0;
        plain_function f = of_one_in_places(
            0.0, [&](double x) { return ++count == failing ? fails_here : (x - 9.0) * (x - 9.0); });
        const bracketed result = bracket(f, 0.0, 1.0, false);
        EXPECT_FALSE(result.found);
        EXPECT_EQ(result.text, failing == 3 ? "evaluation failed" : "") << failing;
        EXPECT_EQ(f.evaluations(), failing);
    }
}

TEST(mnbrak, counts_its_passes) {
    plain_function f = of_one(0.0, [](double x) { return -x; });
    const bracketed result = bracket(f, 0.0, 1.0, true, 5);
    EXPECT_FALSE(result.found);
    EXPECT_EQ(result.text, "ERROR:  Too many iteratiuons in mnbrak()\n");
}

// A function whose parabola has its extreme beyond the third point, where it still decreases. The fourth
// evaluation is at the parabolic point u, the fifth one golden step beyond it.
double falling(double x) {
    return (x - 5.0) * (x - 5.0);
}

TEST(mnbrak, shifts_values_with_their_points_along_a_line) {
    plain_function f = of_one(0.0, [](double x) { return x > 6.0 ? 10.0 : falling(x); });
    const bracketed result = bracket(f, 0.0, 1.0, true);
    ASSERT_TRUE(result.found);
    const double u = f.points[3][0];
    EXPECT_GT(u, 1.0 + gold);
    EXPECT_EQ(f.evaluations(), 5U);
    EXPECT_EQ(result.at.bx, u);
    EXPECT_EQ(result.at.fb, falling(u));
    EXPECT_EQ(result.at.fc, 10.0);
}

TEST(mnbrak, lets_values_lag_their_points_where_there_is_no_line) {
    plain_function f = of_one(0.0, [](double x) { return x > 6.0 ? -10.0 : falling(x); });
    const bracketed result = bracket(f, 0.0, 1.0, false);
    ASSERT_TRUE(result.found);
    const double cx = 1.0 + gold;
    const double u = f.points[3][0];
    const double beyond = u + gold * (u - cx);
    ASSERT_EQ(f.evaluations(), 5U); // a negative value ends the search: -10 is not above the 0
    EXPECT_EQ(f.points[4][0], beyond);
    EXPECT_EQ(result.at.ax, cx);
    EXPECT_EQ(result.at.bx, u);
    EXPECT_EQ(result.at.cx, beyond);
    EXPECT_EQ(result.at.fa, falling(cx));
    EXPECT_EQ(result.at.fb, -10.0);
    EXPECT_EQ(result.at.fc, 0.0);
    EXPECT_FALSE(std::signbit(result.at.fc));
}

double brent_on(plain_function& f, const minimum_bracket& from, double tol, int limit, double& xmin,
                std::string& text) {
    work_text err;
    line_search_state line(f, 1);
    const double value = brent(line, from, tol, limit, xmin, err.str);
    text = err.view();
    return value;
}

TEST(brent, finds_the_minimum_within_its_tolerance) {
    plain_function f = of_one(0.0, [](double x) { return std::cos(x); });
    double xmin = 0.0;
    std::string text;
    const double value = brent_on(f, {2.0, 3.0, 5.0}, 1e-7, 100, xmin, text);
    EXPECT_EQ(value, std::cos(xmin));
    EXPECT_EQ(text, "");
    EXPECT_NEAR(xmin, std::acos(-1.0), 1e-6);
}

TEST(brent, says_that_its_passes_are_used_up_and_gives_the_best_point) {
    plain_function f = of_one(0.0, [](double x) { return std::fabs(x - 3.3); });
    double xmin = 0.0;
    std::string text;
    const double value = brent_on(f, {2.0, 3.0, 5.0}, 1e-7, 3, xmin, text);
    EXPECT_EQ(text, "ERROR:  Too many iterations in brent()\n");
    EXPECT_EQ(value, std::fabs(xmin - 3.3));
    EXPECT_EQ(f.evaluations(), 4U);
}

TEST(brent, gives_zero_for_a_failed_evaluation_and_leaves_the_place) {
    plain_function f = of_one_in_places(0.0, [](double x) { return x == 3.0 ? 1.0 : fails_here; });
    double xmin = -5.0;
    std::string text;
    EXPECT_EQ(brent_on(f, {2.0, 3.0, 5.0}, 1e-7, 100, xmin, text), 0.0);
    EXPECT_EQ(xmin, -5.0);
    EXPECT_EQ(text, "evaluation failed");
    EXPECT_EQ(f.evaluations(), 2U);
}

TEST(minimise, steps_by_a_tenth_of_the_start) {
    for (const auto& [start, step] : {std::pair(1000.0, 100.0), {0.0, 0.1}, {0.5, 0.1}, {-30.0, 3.0}}) {
        plain_function f = of_one(start, [](double x) { return x * x; });
        EXPECT_EQ(minimum(f), "");
        EXPECT_EQ(f.points[0][0], start);
        EXPECT_EQ(f.points[1][0], start + step);
    }
}

TEST(minimise, has_a_message_of_its_own_for_a_missing_bracket) {
    plain_function f = of_one_in_places(1.0, [](double) { return fails_here; });
    EXPECT_EQ(minimum(f), "ERROR: No minimum solution found.  Try a different initial independent value.\n");
    f.negated = true;
    EXPECT_EQ(minimum(f), "ERROR: No maximum solution found.  Try a different initial independent value.\n");
}

TEST(minimise, leaves_the_function_at_the_last_point_tried) {
    plain_function f = of_one(2.0, [](double x) { return (x - 3.0) * (x - 3.0) + 4.0; });
    EXPECT_EQ(minimum(f), "");
    EXPECT_NEAR(f.last(), 3.0, 1e-7);
}

TEST(minimise, shrinks_a_flat_function_to_its_tolerance) {
    plain_function f = of_one(5.0, [](double) { return 7.0; });
    EXPECT_EQ(minimum(f), "");
    // 0.618^n (0.809) = 2 tol1 with tol1 = 0.5e-8 |x|: some 36 golden sections
    EXPECT_NEAR(static_cast<double>(f.evaluations()), 3.0 + 36.0, 4.0);
}

TEST(linmin, takes_no_step_where_there_is_no_minimum) {
    plain_function f({1.0, 2.0}, 1, [](const point& x) { return point{x[0]}; });
    work_text err;
    line_search_state line(f, 2);
    offset_vector<double> p = dvector(1, 2);
    offset_vector<double> xi = dvector(1, 2);
    p[1] = 1.0;
    p[2] = 2.0;
    xi[1] = 1.0;
    double fret = 5.0;
    linmin(line, p, xi, 2, fret, err.str);
    EXPECT_EQ(err.view(), "ERROR:  Too many iteratiuons in mnbrak()\n");
    EXPECT_EQ(fret, 5.0);
    EXPECT_EQ(p[1], 1.0);
    EXPECT_EQ(p[2], 2.0);
    EXPECT_EQ(xi[1], 0.0);
    EXPECT_FALSE(line.along_line);
}

TEST(linmin, takes_no_step_where_the_closing_in_fails) {
    std::size_t count = 0;
    plain_function f({1.0}, 1,
                     [&](const point& x) { return ++count > 3 ? point() : point{std::fabs(x[0] - 1.0)}; });
    work_text err;
    line_search_state line(f, 1);
    offset_vector<double> p = dvector(1, 1);
    offset_vector<double> xi = dvector(1, 1);
    p[1] = 1.0;
    xi[1] = 1.0;
    double fret = 5.0;
    linmin(line, p, xi, 1, fret, err.str);
    EXPECT_EQ(err.view(), "evaluation failed");
    EXPECT_EQ(fret, 0.0);
    EXPECT_EQ(p[1], 1.0);
    EXPECT_EQ(xi[1], 0.0);
}

TEST(powell, finds_a_minimum_of_three_numbers) {
    plain_function f({1.0, -2.0, 5.0}, 1, [](const point& x) {
        return point{1.0 + std::pow(x[0] - x[1], 2) + std::pow(x[1] - 2.0 * x[2], 2) +
                     std::pow(x[2] - 1.0, 2)};
    });
    EXPECT_EQ(minimum(f), "");
    EXPECT_NEAR(f.last(0), 2.0, 1e-3);
    EXPECT_NEAR(f.last(1), 2.0, 1e-3);
    EXPECT_NEAR(f.last(2), 1.0, 1e-3);
}

TEST(powell, ends_after_its_rounds) {
    plain_function f({1.0, 1.0}, 1, [](const point&) { return point{NAN}; });
    EXPECT_EQ(minimum(f), "ERROR:  Too many iterations.\n");
}

TEST(powell, passes_over_a_first_evaluation_that_fails) {
    std::size_t count = 0;
    plain_function f({1.0, 1.0}, 1, [&](const point& x) {
        return ++count == 1 ? point() : point{1.0 + x[0] * x[0] + x[1] * x[1]};
    });
    // The first line search fails at its first point, where nothing is evaluated, and clears the text.
    EXPECT_EQ(minimum(f), "");
    EXPECT_NEAR(f.last(1), 0.0, 1e-3);
}

TEST(mnbrak, ends_without_a_message_if_a_point_between_cannot_be_evaluated) {
    // The parabola through the first three points has its minimum at 2, between the second and the third.
    plain_function f = of_one_in_places(
        0.0, [](double x) { return std::fabs(x - 2.0) < 0.1 ? fails_here : (x - 2.0) * (x - 2.0); });
    const bracketed result = bracket(f, 0.0, 1.0, false);
    EXPECT_FALSE(result.found);
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(f.evaluations(), 4U);
    EXPECT_NEAR(f.last(), 2.0, 1e-12);
    EXPECT_EQ(result.at.bx, 1.0) << "the points are those of before";
}

} // namespace
