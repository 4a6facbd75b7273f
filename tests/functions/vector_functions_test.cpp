// The functions of vectors, the interpolation, and Number.

#include "tests/functions/calling.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using namespace metrify;
using namespace metrify::test;

constexpr exponents newton = {0, -2, 1, 1};
constexpr exponents joule = {0, -2, 1, 2};

void expect_value(const outcome& result, const dim_value& value) {
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(equal(result.value, value));
    EXPECT_EQ(result.depth, 2U);
}

TEST(vector_functions, dot_adds_the_exponents) {
    expect_value(call("dot", {vector(1, 2, 3, newton), vector(4, 5, 6, meter)}), scalar(32, joule));
    EXPECT_EQ(answer("dot([1, 2, 3], [4, 5, 6])"), "= 32");
    EXPECT_EQ(answer("dot([1 m, 2 m], [3 m, 4 m])"), "= 11 m^2");
}

TEST(vector_functions, cross_follows_the_right_hand_rule_and_adds_the_exponents) {
    expect_value(call("cross", {vector(1, 0, 0), vector(0, 1, 0)}), vector(0, 0, 1));
    expect_value(call("cross", {vector(1, 2, 3, newton), vector(4, 5, 7, meter)}), vector(-1, 5, -3, joule));
    EXPECT_EQ(answer("cross([1, 2, 3], [4, 5, 7])"), "= [ -1 , 5 , -3 ]");
}

TEST(vector_functions, mag_keeps_the_units) {
    expect_value(call("mag", {vector(2, 3, 6, meter)}), scalar(7, meter));
    EXPECT_EQ(answer("mag([3 m, 4 m])"), "= 5 m");
}

TEST(vector_functions, of_two_vectors_refuse_scalars) {
    for (const char* name : {"dot", "cross", "angle"}) {
        const std::string message = "ERROR:  Computing " + std::string(name) + "() with scalars.\n";
        expect_refused(call(name, {scalar(1), vector(1, 2, 3)}), message);
        expect_refused(call(name, {vector(1, 2, 3), scalar(1)}), message);
        expect_refused(call(name, {scalar(1), scalar(1)}), message);
    }
}

TEST(vector_functions, of_one_vector_refuse_scalars) {
    for (const char* name : {"mag", "PolarAngle"})
        expect_refused(call(name, {scalar(5)}),
                       "ERROR:  Computing " + std::string(name) + "() with scalars.\n");
    EXPECT_EQ(answer("mag(5)"), "ERROR:  Computing mag() with scalars.");
}

TEST(vector_functions, take_any_kind_that_is_not_zero_for_a_vector) {
    dim_value v = vector(3, 4, 0);
    v.kind = -7;
    expect_value(call("mag", {v}), scalar(5));
    expect_value(call("cross", {v, v}), vector(0, 0, 0));
}

TEST(vector_functions, let_the_sentinel_into_the_formulas) {
    expect_value(call("mag", {vector(infinity_sentinel, 0, 0, meter)}), scalar(infinity_sentinel, meter));
    EXPECT_TRUE(std::isnan(call("dot", {vector(infinity_sentinel, 0, 0), vector(0, 0, 0)}).value.comp[0]));
}

TEST(component, is_a_scalar_with_the_units_of_the_vector) {
    const dim_value v = vector(7, 8, 9, meter);
    expect_value(call("component", {v, scalar(1)}), scalar(7, meter));
    expect_value(call("component", {v, scalar(2)}), scalar(8, meter));
    expect_value(call("component", {v, scalar(3)}), scalar(9, meter));
    EXPECT_EQ(answer("component([7 m, 8 m, 9 m], 3)"), "= 9 m");
}

TEST(component, truncates_the_index) {
    expect_value(call("component", {vector(7, 8, 9), scalar(2.9)}), scalar(8));
    expect_value(call("component", {vector(7, 8, 9), scalar(3.999)}), scalar(9));
}

TEST(component, accepts_an_index_in_radians) {
    EXPECT_EQ(answer("component([7, 8, 9], 1 rad)"), "= 7");
}

TEST(component, refuses_an_index_that_names_none) {
    for (const double index : {0.0, 0.9, -1.0, 4.0, 1e300, -1e300, 4294967297.0, infinity_sentinel,
                               -infinity_sentinel, not_a_number})
        expect_refused(call("component", {vector(7, 8, 9), scalar(index)}),
                       "ERROR:  Bad index in component().\n");
    EXPECT_EQ(answer("component([7, 8, 9], 0)"), "ERROR:  Bad index in component().");
    EXPECT_EQ(answer("component([7, 8, 9], 4)"), "ERROR:  Bad index in component().");
}

TEST(component, tests_the_vector_then_the_index) {
    expect_refused(call("component", {scalar(1), vector(1, 2, 3, meter)}),
                   "ERROR:  Computing component() with a scalar.\n");
    expect_refused(call("component", {vector(7, 8, 9), vector(1, 2, 3, meter)}),
                   "ERROR:  Computing component() index cant be a vector.\n");
    expect_refused(call("component", {vector(7, 8, 9), scalar(9, meter)}),
                   "ERROR:  Computing component() second arg has units.\n");
}

TEST(angle, is_the_arc_tangent_of_the_cosine) {
    constexpr expectation lines[] = {
        {"angle([1, 0, 0], [2, 0, 0])", "= 0.785398 rad"},
        {"angle([1, 0, 0], [-2, 0, 0])", "= -0.785398 rad"},
        {"angle([1, 0, 0], [0, 3, 0])", "= 0 rad"},
        {"angle([1, 2, 3], [4, 5, 6])", "= 0.772552 rad"},
        {"angle([1 m, 2 m, 3 m], [4 m, 5 m, 6 m])", "= 0.772552 rad"},
    };
    expect_answers(lines);
}

TEST(angle, with_a_vector_without_length_is_a_plain_zero) {
    expect_value(call("angle", {vector(0, 0, 0), vector(1, 2, 3, meter)}), scalar(0));
    expect_value(call("angle", {vector(1, 2, 3, meter), vector(0, 0, 0, meter)}), scalar(0));
    expect_value(call("angle", {vector(not_a_number, 0, 0), vector(1, 0, 0)}), scalar(0));
}

TEST(angle, refuses_vectors_of_different_dimensions) {
    expect_refused(call("angle", {vector(1, 2, 3, meter), vector(1, 2, 3, second)}),
                   "ERROR:  Computing angle() with args of diff dimensions.\n");
}

TEST(PolarVec, is_a_vector_with_the_units_of_the_radius) {
    EXPECT_EQ(answer("PolarVec(2, 60 deg)"), "= [ 1 , 1.73205 , 0 ]");
    EXPECT_EQ(answer("PolarVec(2 m, 60 deg)"), "= [ 1 , 1.73205 , 0 ] m");
    expect_value(call("PolarVec", {scalar(3, meter), scalar(0, radian)}), vector(3, 0, 0, meter));
}

// The digits of the cosine near its zero depend on the platform's library.
TEST(PolarVec, at_a_quarter_turn_has_next_to_nothing_in_its_first_component) {
    const outcome result = call("PolarVec", {scalar(2, meter), scalar(std::numbers::pi / 2.0, radian)});
    EXPECT_NEAR(result.value.comp[0], 1.2e-16, 0.05e-16);
    EXPECT_TRUE(equal(result.value, vector(result.value.comp[0], 2, 0, meter)));
}

TEST(PolarVec, refuses_vectors) {
    constexpr const char* message = "ERROR:  Computing PolarVec() with vector.\n";
    expect_refused(call("PolarVec", {vector(1, 0, 0), scalar(1, radian)}), message);
    expect_refused(call("PolarVec", {scalar(1), vector(1, 0, 0, radian)}), message);
}

TEST(PolarVec, refuses_what_is_no_plain_angle) {
    constexpr const char* message = "ERROR:  PolarVec() second arg must be an angle.\n";
    expect_refused(call("PolarVec", {scalar(2, meter), scalar(1)}), message);
    expect_refused(call("PolarVec", {scalar(2, meter), scalar(1, {2})}), message);
    expect_refused(call("PolarVec", {scalar(2, meter), scalar(1, {1, 0, 0, 0, 0, 1})}), message);
    expect_refused(call("PolarVec", {scalar(2, meter), scalar(0)}), message); // a zero is not accepted
    EXPECT_EQ(answer("PolarVec(2 m, 1)"), "ERROR:  PolarVec() second arg must be an angle.");
}

TEST(PolarAngle, is_the_angle_of_the_first_two_components) {
    constexpr expectation lines[] = {
        {"PolarAngle([3, 4, 0])", "= 0.927295 rad"},
        {"PolarAngle([3 m, 4 m, 99 m])", "= 0.927295 rad"},
        {"PolarAngle([-1 s, -1 s, 0])", "= -2.35619 rad"},
    };
    expect_answers(lines);
    expect_value(call("PolarAngle", {vector(1, 0, 5, newton)}), scalar(0, radian));
}

TEST(Number, drops_the_exponents_and_nothing_else) {
    EXPECT_EQ(answer("Number(5 ft)"), "= 1.524");
    EXPECT_EQ(answer("Number(20 degC)"), "= 293.15");
    expect_value(call("Number", {scalar(3, {1, 2, 3, 4, 5, 6, 7, 8})}), scalar(3));
    expect_value(call("Number", {vector(1, 2, 3, meter)}), vector(1, 2, 3));
    expect_value(call("Number", {scalar(infinity_sentinel, meter)}), scalar(infinity_sentinel));
}

TEST(lininterp, lies_on_the_line_through_two_points) {
    constexpr expectation lines[] = {
        {"lininterp(0, 0, 10, 100, 5)", "= 50"},
        {"lininterp(1, 10, 3, 20, 4)", "= 25"}, // beyond the second point
        {"lininterp(0 s, 0 m, 10 s, 100 m, 5 s)", "= 50 m"},
    };
    expect_answers(lines);
}

TEST(lininterp, has_the_units_of_y1_where_y2_differs_in_angle) {
    EXPECT_EQ(answer("lininterp(0, 1 rad, 10, 3, 5)"), "= 2 rad");
    EXPECT_EQ(answer("lininterp(0, 1, 10, 3 rad, 5)"), "= 2");
}

TEST(lininterp, gives_a_pure_zero_the_units_of_its_partner) {
    EXPECT_EQ(answer("lininterp(0, 0, 10 s, 100 m, 0)"), "= 0 m");
    EXPECT_EQ(answer("lininterp(5 s, 0, 10 s, 100 m, 0)"), "= -100 m");
    EXPECT_EQ(answer("lininterp(0, 0, 10 s, 100 m, 5 s)"), "= 50 m");
}

TEST(lininterp, refuses_a_vector_in_any_place) {
    for (std::size_t place = 0; place < 5; ++place) {
        std::vector<dim_value> given = {scalar(0), scalar(0), scalar(10), scalar(100), scalar(5)};
        given[place].kind = 1;
        expect_refused(call("lininterp", given), "ERROR:  Computing LinInterp() with a vector argument.\n");
    }
}

TEST(lininterp, refuses_x_of_different_dimensions) {
    constexpr expectation lines[] = {
        {"lininterp(1 s, 0, 10 s, 100, 5)", "ERROR:  Computing LinInterp() with X args of diff dimensions."},
        {"lininterp(1, 0, 10 s, 100, 5)", "ERROR:  Computing LinInterp() with X args of diff dimensions."},
        // the zero adopts the meters of x, which differ from the seconds
        {"lininterp(0, 0, 10 s, 100, 5 m)", "ERROR:  Computing LinInterp() with X args of diff dimensions."},
    };
    expect_answers(lines);
}

TEST(lininterp, refuses_y_of_different_dimensions) {
    EXPECT_EQ(answer("lininterp(0, 1 m, 10, 100 s, 5)"),
              "ERROR:  Computing LinInterp() with Y args of diff dimensions.");
}

TEST(lininterp, refuses_points_above_each_other) {
    constexpr const char* message = "ERROR:  LinInterp() X1 and x2 must have diff values.\n";
    const auto at = [](double x1, double x2) {
        return call("lininterp", {scalar(x1), scalar(0), scalar(x2), scalar(1), scalar(0)});
    };
    expect_refused(at(1, 1), message);
    expect_refused(at(0, 9e-11), message);
    expect_refused(at(0, -9e-11), message);
    EXPECT_EQ(at(0, 1e-10).err, "");
    EXPECT_EQ(answer("lininterp(1, 0, 1, 100, 5)"), "ERROR:  LinInterp() X1 and x2 must have diff values.");
}

TEST(lininterp, tests_x_before_y_and_both_before_the_distance) {
    expect_refused(
        call("lininterp", {scalar(1), scalar(1, meter), scalar(1, second), scalar(1, second), scalar(1)}),
        "ERROR:  Computing LinInterp() with X args of diff dimensions.\n");
    expect_refused(call("lininterp", {scalar(1), scalar(1, meter), scalar(1), scalar(1, second), scalar(1)}),
                   "ERROR:  Computing LinInterp() with Y args of diff dimensions.\n");
}

} // namespace
