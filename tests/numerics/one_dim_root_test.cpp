// The outward search for a change of sign and Ridders' method, on plain functions.

#include "numerics/solve/one_dim_root.h"
#include "tests/numerics/plain_function.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;
using testing::ElementsAre;

constexpr std::string_view no_solution =
    "ERROR: No solution found.  Try a different initial independent value.\n";

std::string solve(plain_function& f) {
    work_text err;
    solve_one_dim(f, err.str);
    return std::string(err.view());
}

std::string bracket(plain_function& f, double x0, double dx, int Max_it, double growth, root_bracket& found,
                    bool expected) {
    work_text err;
    EXPECT_EQ(bi_bracket_zero(f, x0, dx, Max_it, growth, found, err.str), expected);
    return std::string(err.view());
}

TEST(solve_one_dim, starts_with_steps_of_a_tenth_of_the_start) {
    plain_function f = of_one(10.0, [](double x) { return x - 16.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_THAT(places(f), ElementsAre(10, 9, 11, 7, 13, 3, 17, 15, 16, 16));
}

TEST(solve_one_dim, starts_with_steps_of_a_tenth_from_a_start_below_one) {
    plain_function f = of_one(0.5, [](double x) { return x - 0.58; });
    EXPECT_EQ(solve(f), "");
    EXPECT_EQ(f.points[1][0], 0.5 - 0.1);
    EXPECT_EQ(f.points[2][0], 0.5 + 0.1);
    EXPECT_NEAR(f.last(), 0.58, 1e-8);
}

TEST(solve_one_dim, starts_with_a_tenth_of_the_magnitude_of_a_negative_start) {
    plain_function f = of_one(-20.0, [](double x) { return x + 21.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_EQ(f.points[1][0], -22.0);
    EXPECT_EQ(f.points[2][0], -18.0);
}

TEST(solve_one_dim, evaluates_a_start_that_is_a_root_once) {
    plain_function f = of_one(3.0, [](double x) { return x - 3.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_THAT(places(f), ElementsAre(3));
}

TEST(solve_one_dim, stays_at_the_midpoint_if_the_search_lands_on_the_root) {
    plain_function f = of_one(10.0, [](double x) { return x - 13.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_EQ(f.last(), 12.0);
}

TEST(solve_one_dim, stays_at_a_midpoint_that_is_the_root) {
    plain_function f = of_one(10.0, [](double x) { return x - 15.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_THAT(places(f), ElementsAre(10, 9, 11, 7, 13, 3, 17, 15));
}

TEST(solve_one_dim, reports_a_missing_bracket) {
    plain_function f = of_one_in_places(1.0, [](double) { return fails_here; });
    EXPECT_EQ(solve(f), no_solution);
    EXPECT_EQ(f.evaluations(), 1U);
}

TEST(solve_one_dim, ends_with_one_direction_where_the_other_fails) {
    plain_function f = of_one_in_places(10.0, [](double x) { return x < 9.5 ? fails_here : x - 16.0; });
    EXPECT_EQ(solve(f), "");
    EXPECT_THAT(places(f), ElementsAre(10, 9, 11, 13, 17, 15, 16, 16));
}

TEST(bi_bracket_zero, makes_up_a_bracket_at_a_root) {
    plain_function f = of_one(0.0, [](double x) { return x - 3.0; });
    root_bracket found;
    EXPECT_EQ(bracket(f, 3.0, 0.1, 600, 2.0, found, true), "");
    EXPECT_EQ(found.a, 3.0);
    EXPECT_EQ(found.b, 4.0);
    EXPECT_EQ(found.m, 3.5);
    EXPECT_EQ(found.fa, 0.0);
    EXPECT_EQ(found.fb, 0.5);
    EXPECT_EQ(found.fm, 0.0);
}

TEST(bi_bracket_zero, takes_the_low_side_of_two) {
    plain_function f = of_one(0.0, [](double x) { return 1.5 - std::fabs(x); });
    root_bracket found;
    EXPECT_EQ(bracket(f, 0.0, 1.0, 600, 2.0, found, true), "");
    EXPECT_EQ(found.a, -1.0);
    EXPECT_EQ(found.b, -3.0);
    EXPECT_EQ(found.m, -2.0);
    EXPECT_EQ(found.fa, 0.5);
    EXPECT_EQ(found.fb, -1.5);
    EXPECT_EQ(found.fm, -0.5);
}

TEST(bi_bracket_zero, has_separate_texts_if_both_directions_fail) {
    plain_function at_once = of_one_in_places(0.0, [](double x) { return x == 0.0 ? 1.0 : fails_here; });
    root_bracket found;
    EXPECT_EQ(bracket(at_once, 0.0, 1.0, 600, 2.0, found, false), "Cannot evaluate bracketing points (1)");
    plain_function later =
        of_one_in_places(0.0, [](double x) { return std::fabs(x) < 5.0 ? 1.0 : fails_here; });
    EXPECT_EQ(bracket(later, 0.0, 1.0, 600, 2.0, found, false), "Cannot evaluate bracketing points (2)");
    EXPECT_THAT(places(later), ElementsAre(0, -1, 1, -3, 3, -7, 7));
}

TEST(bi_bracket_zero, gives_up_after_its_passes) {
    constexpr const char* text = "ERROR:  Max_it reached w/o sign change in bi_bracket_zero()\n";
    plain_function f = of_one(0.0, [](double) { return 1.0; });
    root_bracket found;
    EXPECT_EQ(bracket(f, 0.0, 1.0, 3, 2.0, found, false), text);
    EXPECT_THAT(places(f), ElementsAre(0, -1, 1, -3, 3, -7, 7, -15, 15));
    plain_function none = of_one(0.0, [](double) { return 1.0; });
    EXPECT_EQ(bracket(none, 0.0, 1.0, 0, 2.0, found, false), text);
    EXPECT_THAT(places(none), ElementsAre(0, -1, 1));
}

TEST(bi_bracket_zero, takes_growth_towards_the_midpoint_for_a_pole) {
    plain_function f = of_one(0.0, [](double x) { return 1.0 / x; });
    root_bracket found;
    EXPECT_EQ(bracket(f, 1.0, 0.1, 600, 2.0, found, false),
              "ERROR:  Possible singularity in bi_bracket_zero()\n");
    EXPECT_NEAR(found.a, 0.3, 1e-15);
    EXPECT_NEAR(found.b, -0.5, 1e-15);
    EXPECT_NEAR(found.m, -0.1, 1e-15);
}

// The ends are 0 and 1, with the values at_0 and at_1; the other direction finds no change of sign.
std::string bracket_with_middle(double at_0, double at_1, double middle, bool expected) {
    plain_function f = of_one(0.0, [&](double x) {
        return x == 0.0 ? at_0 : x == 1.0 ? at_1 : x == 0.5 ? middle : at_0;
    });
    root_bracket found;
    return bracket(f, 0.0, 1.0, 600, 2.0, found, expected);
}

TEST(bi_bracket_zero, lets_a_midpoint_grow_to_one_and_a_half_of_the_larger_end) {
    constexpr const char* text = "ERROR:  Possible singularity in bi_bracket_zero()\n";
    for (const auto& [at_0, at_1] : {std::pair(1.0, -1.0), {1.0, -2.0}, {2.0, -1.0}, {-1.0, 2.0}}) {
        const double bound = 1.5 * std::max(std::fabs(at_0), std::fabs(at_1));
        for (const double sign : {1.0, -1.0}) {
            EXPECT_EQ(bracket_with_middle(at_0, at_1, sign * bound, true), "");
            EXPECT_EQ(bracket_with_middle(at_0, at_1, sign * std::nextafter(bound, 9.0), false), text);
        }
    }
}

TEST(bi_bracket_zero, continues_over_nans) {
    plain_function f = of_one(0.0, [](double x) { return std::fabs(x) < 5.0 && x != 0.0 ? NAN : x - 10.0; });
    root_bracket found;
    EXPECT_EQ(bracket(f, 0.0, 1.0, 600, 2.0, found, true), "");
    EXPECT_EQ(found.a, 7.0);
    EXPECT_EQ(found.b, 15.0);
}

TEST(bi_bracket_zero, fails_where_the_midpoint_does) {
    plain_function f = of_one_in_places(0.0, [](double x) { return x == 2.0 ? fails_here : x - 1.5; });
    root_bracket found;
    EXPECT_EQ(bracket(f, 0.0, 1.0, 600, 2.0, found, false), "evaluation failed");
}

double ridders(plain_function& f, const root_bracket& from, std::string& text) {
    work_text err;
    const double root = zriddr(f, from, 1e-8, err.str);
    text = err.view();
    return root;
}

TEST(zriddr, answers_a_zero_in_the_bracket_without_an_evaluation) {
    plain_function f = of_one(0.0, [](double x) { return x; });
    std::string text;
    EXPECT_EQ(ridders(f, {1, 2, 3, 0, 0, 0}, text), 1.0);
    EXPECT_EQ(ridders(f, {1, 2, 3, 1, 0, 0}, text), 2.0);
    EXPECT_EQ(ridders(f, {1, 2, 3, 1, 1, 0}, text), 3.0);
    EXPECT_EQ(text, "");
    EXPECT_EQ(f.evaluations(), 0U);
}

TEST(zriddr, refuses_an_interval_without_a_change_of_sign) {
    plain_function f = of_one(0.0, [](double x) { return x; });
    std::string text;
    EXPECT_EQ(ridders(f, {1, 2, 3, 1, 1, 1}, text), 0.0);
    EXPECT_EQ(text, "ERROR:  Root must be bracketed in zriddr()\n");
}

TEST(zriddr, leaves_the_function_at_the_root) {
    plain_function f = of_one(0.0, [](double x) { return x * x * x - 2.0; });
    std::string text;
    const double root = ridders(f, {1, 2, 1.5, -1, 6, 1.375}, text);
    EXPECT_EQ(text, "");
    EXPECT_NEAR(root, std::cbrt(2.0), 1e-8);
    EXPECT_EQ(f.last(), root);
}

TEST(zriddr, needs_no_order_of_the_ends) {
    plain_function f = of_one(0.0, [](double x) { return x * x * x - 2.0; });
    std::string text;
    EXPECT_NEAR(ridders(f, {2, 1, 1.5, 6, -1, 1.375}, text), std::cbrt(2.0), 1e-8);
}

TEST(zriddr, distinguishes_a_pole_from_a_root_at_the_end) {
    plain_function f = of_one(0.0, [](double x) { return 1.0 / (x - 12.3); });
    std::string text;
    ridders(f, {11, 13, 12, 1 / -1.3, 1 / 0.7, 1 / -0.3}, text);
    EXPECT_EQ(text, "ERROR:  Singularity detected in zriddr()\n");
}

TEST(zriddr, takes_a_value_above_all_three_of_the_start_for_a_pole) {
    std::vector<double> sizes = {1.0, 2.0, 3.0};
    do {
        for (const double at_root : {1.5, 2.5, 3.0, 3.5}) {
            // The change of sign is at the lower end, whose value is the only negative one.
            plain_function f = of_one(0.0, [&](double) { return at_root; });
            std::string text;
            ridders(f, {0, 1, 0.5, -sizes[0], sizes[1], sizes[2]}, text);
            EXPECT_EQ(text, at_root > 3.0 ? "ERROR:  Singularity detected in zriddr()\n" : "")
                << at_root << ": " << sizes[0] << ", " << sizes[1] << ", " << sizes[2];
        }
    } while (std::next_permutation(sizes.begin(), sizes.end()));
}

TEST(zriddr, gives_zero_and_the_text_of_a_failed_evaluation) {
    plain_function f = of_one_in_places(0.0, [](double) { return fails_here; });
    std::string text;
    EXPECT_EQ(ridders(f, {1, 2, 1.5, -1, 1, 0.5}, text), 0.0);
    EXPECT_EQ(text, "evaluation failed");
    EXPECT_EQ(f.evaluations(), 1U);
}

TEST(zriddr, ends_each_pass_with_the_midpoint_of_the_new_bracket) {
    plain_function f = of_one(0.0, [](double x) { return x < 1.2 ? -1.0 : 1.0; });
    std::string text;
    ridders(f, {0, 2, 1, -1, 1, -1}, text);
    // The first new point is 1 + 1/sqrt(2); the bracket from 1 to there has its midpoint in between.
    EXPECT_NEAR(f.points[0][0], 1.0 + 1.0 / std::sqrt(2.0), 1e-15);
    EXPECT_NEAR(f.points[1][0], 1.0 + 0.5 / std::sqrt(2.0), 1e-15);
}

TEST(zriddr, says_that_its_passes_are_used_up) {
    // Not-a-number at each midpoint: the distance to the previous point never reaches the tolerance.
    plain_function f = of_one(0.0, [](double x) { return x != x ? -1.0 : NAN; });
    std::string text;
    ridders(f, {0, 2, 1, NAN, 1, NAN}, text);
    EXPECT_EQ(text, "ERROR:  Maximum iterations reached in zriddr()\n");
    EXPECT_EQ(f.evaluations(), 1200U); // the last one is not an evaluation
}

TEST(zriddr, ends_without_a_new_point_where_the_squares_underflow) {
    plain_function f = of_one(0.0, [](double) { return 1e-200; });
    std::string text;
    EXPECT_EQ(ridders(f, {0, 2, 1, 1e-200, -1e-200, 1e-200}, text), -1.11e30);
    EXPECT_EQ(text, "");
    EXPECT_THAT(places(f), ElementsAre(-1.11e30));
}

TEST(zriddr, ends_at_the_new_point_if_the_bracket_is_within_the_tolerance) {
    plain_function f = of_one(0.0, [](double x) { return x * x * x - 2.0; });
    work_text err;
    // 2 - 2 * 6 / sqrt(6^2 + 2 * 62); the bracket from there to 2 is shorter than 1.
    const double x = 2.0 - 12.0 / std::sqrt(160.0);
    EXPECT_NEAR(zriddr(f, {0, 4, 2, -2, 62, 6}, 1.0, err.str), x, 1e-15);
    EXPECT_EQ(err.view(), "");
    EXPECT_EQ(f.evaluations(), 2U) << "the new point twice, and no midpoint";
}

} // namespace
