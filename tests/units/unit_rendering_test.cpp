#include "tests/testing.h"
#include "units/unit_expression.h"
#include "units/unit_rendering.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

using namespace metrify;

constexpr std::array<unit_system, 4> all_systems = {system_MKS, system_cgs, system_FPS, system_IPS};

std::string rendered(unit_system system, const exponents& dim) {
    work_text out;
    work_text err;
    render_units(system, dim, out.str, err.str);
    EXPECT_EQ(err.view(), "");
    return std::string(out.view());
}

/// The output of a printing routine.
struct printed {
    std::string out, err;
};

class unit_rendering : public testing::Test {
  protected:
    unit_rendering() { reset_unit_state(); }
    ~unit_rendering() override { reset_unit_state(); }

    static void set_exceptions(const char* list) {
        work_text err;
        cursor p(list);
        read_exceptions(p, err.str);
        ASSERT_EQ(err.view(), "");
    }
    static std::string unit_text_of(const dim_value& value) {
        work_text out;
        work_text err;
        unit_text(out.str, value, err.str);
        return std::string(out.view());
    }
    static std::string message_text_of(const dim_value& value) {
        work_text out;
        work_text err;
        unit_text_for_message(out.str, value, err.str);
        return std::string(out.view());
    }
    static std::string shown(const dim_value& value) {
        work_text out;
        work_text err;
        print_value_in_default_units(out.str, value, err.str, true);
        EXPECT_EQ(err.view(), "");
        return std::string(out.view());
    }
    static std::string shown_in(unit_system system, const dim_value& value) {
        work_text out;
        work_text err;
        print_value_in_system(system, out.str, value, err.str, false);
        EXPECT_EQ(err.view(), "");
        return std::string(out.view());
    }
    static printed requested(const dim_value& value, const char* request, bool no_check = false) {
        work_text out;
        work_text err;
        cursor p(request);
        const bool done = print_value_with_requested_units(out.str, value, p, err.str, no_check);
        EXPECT_EQ(done, err.view().empty());
        return {std::string(out.view()), std::string(err.view())};
    }
};

// One unit.

std::string one_unit(double exponent) {
    work_text out;
    EXPECT_TRUE(append_one_exponentiated_unit_to_a_string("m", exponent, out.str));
    return std::string(out.view());
}

TEST(one_exponentiated_unit, is_the_name_for_an_exponent_of_1_or_minus_1) {
    EXPECT_EQ(one_unit(1), "m ");
    EXPECT_EQ(one_unit(-1), "m ");
}

TEST(one_exponentiated_unit, shows_a_whole_exponent_without_its_sign) {
    EXPECT_EQ(one_unit(2), "m^2 ");
    EXPECT_EQ(one_unit(-2), "m^2 ");
    EXPECT_EQ(one_unit(12345678), "m^12345678 ");
    EXPECT_EQ(one_unit(-2147483647), "m^2147483647 ");
}

TEST(one_exponentiated_unit, shows_any_other_exponent_in_six_digits) {
    EXPECT_EQ(one_unit(0.5), "m^0.5 ");
    EXPECT_EQ(one_unit(-0.5), "m^0.5 ");
    EXPECT_EQ(one_unit(1.0 / 3.0), "m^0.333333 ");
    EXPECT_EQ(one_unit(2.0000001), "m^2 ");
    EXPECT_EQ(one_unit(1e-7), "m^1e-07 ");
    EXPECT_EQ(one_unit(3e9), "m^3e+09 ");
}

TEST(one_exponentiated_unit, is_left_out_beyond_256_characters) {
    work_text out;
    out.append("kg ");
    EXPECT_TRUE(append_one_exponentiated_unit_to_a_string(std::string(255, 'u'), 1, out.str));
    EXPECT_EQ(out.view(), "kg " + std::string(255, 'u') + " ");
    EXPECT_FALSE(append_one_exponentiated_unit_to_a_string(std::string(256, 'u'), 1, out.str));
    EXPECT_FALSE(append_one_exponentiated_unit_to_a_string(std::string(254, 'u'), -2, out.str));
    EXPECT_EQ(out.view(), "kg " + std::string(255, 'u') + " ");
    EXPECT_TRUE(append_one_exponentiated_unit_to_a_string(std::string(253, 'u'), -2, out.str));
}

// Systems.

TEST(render_units, writes_nothing_for_no_exponents) {
    for (const unit_system system : all_systems)
        EXPECT_EQ(rendered(system, in_plain), "");
}

TEST(render_units, writes_a_force) {
    EXPECT_EQ(rendered(system_MKS, in_N), "kg m / s^2");
    EXPECT_EQ(rendered(system_cgs, in_N), "g cm / s^2");
    EXPECT_EQ(rendered(system_FPS, in_N), "lbf");
    EXPECT_EQ(rendered(system_IPS, in_N), "lbf");
}

TEST(render_units, writes_a_pressure) {
    EXPECT_EQ(rendered(system_MKS, in_Pa), "kg / m s^2");
    EXPECT_EQ(rendered(system_cgs, in_Pa), "g / cm s^2");
    EXPECT_EQ(rendered(system_FPS, in_Pa), "lbf / ft^2");
    EXPECT_EQ(rendered(system_IPS, in_Pa), "lbf / in^2");
}

TEST(render_units, writes_a_mass_by_a_force_in_the_systems_of_the_foot_and_the_inch) {
    EXPECT_EQ(rendered(system_MKS, in_kg), "kg");
    EXPECT_EQ(rendered(system_cgs, in_kg), "g");
    EXPECT_EQ(rendered(system_FPS, in_kg), "lbf s^2 / ft");
    EXPECT_EQ(rendered(system_IPS, in_kg), "lbf s^2 / in");
}

TEST(render_units, writes_speed_current_and_energy) {
    EXPECT_EQ(rendered(system_FPS, {0, -1, 0, 1, 0, 0, 0, 0}), "ft / s");
    EXPECT_EQ(rendered(system_MKS, {0, -1, 0, 0, 0, 0, 0, 1}), "C / s");
    EXPECT_EQ(rendered(system_FPS, in_J), "lbf ft");
}

TEST(render_units, writes_the_slots_in_their_order) {
    EXPECT_EQ(rendered(system_MKS, {1, 1, 1, 1, 1, 1, 1, 1}), "kg m rad s degK mol degKdiff C");
    EXPECT_EQ(rendered(system_cgs, {1, 1, 1, 1, 1, 1, 1, 1}), "g cm rad s degK mol degK C");
    // Of length 2 - 1 is left, of time 3 = 1 + 2 * 1.
    EXPECT_EQ(rendered(system_FPS, {1, 1, 1, 2, 1, 1, 1, 1}), "lbf ft rad s^3 degR mol degR C");
    EXPECT_EQ(rendered(system_IPS, {1, 1, 1, 2, 1, 1, 1, 1}), "lbf in rad s^3 degR mol degF C");
}

TEST(render_units, writes_the_negative_exponents_in_slot_order_after_one_slash) {
    EXPECT_EQ(rendered(system_MKS, {-1, -1, -1, -1, -1, -1, -1, -1}), "/ kg m rad s degK mol degKdiff C");
    EXPECT_EQ(rendered(system_MKS, {1, -1, 2, -2, 3, -3, 1, -1}), "kg^2 rad degK^3 degKdiff / m^2 s mol^3 C");
}

TEST(render_units, starts_with_the_slash_if_all_exponents_are_negative) {
    EXPECT_EQ(rendered(system_MKS, {0, -1, 0, 0, 0, 0, 0, 0}), "/ s");
    EXPECT_EQ(rendered(system_MKS, {0, 0, 0, -0.5, 0, 0, 0, 0}), "/ m^0.5");
}

TEST(render_units, omits_the_exponent_1_after_the_slash_too) {
    EXPECT_EQ(rendered(system_MKS, {0, -1, 0, 1, 0, 0, 0, 0}), "m / s");
    EXPECT_EQ(rendered(system_MKS, {0, -2, 0, 1, 0, 0, 0, 0}), "m / s^2");
    EXPECT_EQ(rendered(system_MKS, {0, 0, 0, 0.5, 0, 0, 0, 0}), "m^0.5");
}

TEST(render_units, appends_to_existing_text) {
    work_text out;
    work_text err;
    out.append("before ");
    render_units(system_MKS, in_plain, out.str, err.str);
    EXPECT_EQ(out.view(), "before ");
    render_units(system_MKS, in_N, out.str, err.str);
    EXPECT_EQ(out.view(), "before kg m / s^2");
}

TEST(render_units, writes_what_the_parser_reads_back_to_the_same_exponents) {
    std::mt19937 random(20240131);
    std::uniform_int_distribution<int> eighths(-40, 40);
    std::uniform_int_distribution<int> chance(0, 2);
    for (int round = 0; round < 20000; ++round) {
        exponents dim = {};
        for (double& exponent : dim)
            exponent = chance(random) == 0 ? eighths(random) / 8.0 : 0.0;
        for (const unit_system system : all_systems) {
            exponents expected = dim;
            if (system != system_MKS) { // only MKS has a unit of temperature difference
                expected[dim_temperature] += expected[dim_temperature_difference];
                expected[dim_temperature_difference] = 0.0;
            }
            const std::string text = rendered(system, dim);
            cursor p(text.c_str());
            unit_scale scale;
            work_text err;
            ASSERT_TRUE(parse_unit_expression(p, scale, err.str)) << text;
            ASSERT_EQ(*p, '\0') << text;
            ASSERT_TRUE(same_units_strict(scale.dim, expected)) << text;
        }
    }
}

TEST(render_units, writes_six_digits_of_a_fraction_which_still_agrees) {
    for (const double exponent : {1.0 / 3.0, -2.0 / 3.0, 1.0 / 7.0, 22.0 / 7.0}) {
        const exponents dim = {0, 0, 0, exponent, 0, 0, 0, 0};
        const std::string text = rendered(system_MKS, dim);
        cursor p(text.c_str());
        unit_scale scale;
        work_text err;
        EXPECT_TRUE(parse_unit_expression(p, scale, err.str));
        EXPECT_TRUE(same_units_strict(scale.dim, dim)) << text;
    }
}

// Exceptions.

TEST_F(unit_rendering, uses_the_current_system) {
    set_unit_system(system_cgs);
    EXPECT_EQ(unit_text_of(scalar(1, in_N)), "g cm / s^2");
    set_unit_system(system_IPS);
    EXPECT_EQ(unit_text_of(scalar(1, in_N)), "lbf");
}

TEST_F(unit_rendering, uses_the_first_exception_that_agrees) {
    set_exceptions("(ft, N, lbf)");
    EXPECT_EQ(unit_text_of(scalar(1, in_N)), " N");
    EXPECT_EQ(unit_text_of(scalar(1, in_m)), "ft");
    EXPECT_EQ(unit_text_of(scalar(1, in_s)), "s");
}

TEST_F(unit_rendering, applies_an_exception_only_if_all_eight_exponents_agree) {
    set_exceptions("(N)");
    EXPECT_EQ(unit_text_of(scalar(1, in_J)), "kg m^2 / s^2");
    EXPECT_EQ(unit_text_of(scalar(1, {-1, -2, 1, 1, 0, 0, 0, 0})), "kg m / rad s^2");
    EXPECT_EQ(unit_text_of(scalar(1, {0, -2, 1, 1, 0, 1, 0, 0})), "kg m mol / s^2");
}

TEST_F(unit_rendering, applies_an_exception_in_every_system) {
    set_exceptions("(N)");
    set_unit_system(system_IPS);
    EXPECT_EQ(unit_text_of(scalar(1, in_N)), "N");
}

TEST_F(unit_rendering, calls_a_value_without_exponents_dimensionless_in_a_message) {
    EXPECT_EQ(message_text_of(scalar(1)), "Dimensionless");
    EXPECT_EQ(unit_text_of(scalar(1)), "");
    EXPECT_EQ(message_text_of(scalar(1, in_rad)), "rad");
    EXPECT_EQ(message_text_of(scalar(1, in_N)), "kg m / s^2");
}

TEST_F(unit_rendering, prefers_an_exception_for_plain_numbers_to_the_word) {
    set_exceptions("(%)");
    EXPECT_EQ(message_text_of(scalar(1)), "%");
    EXPECT_EQ(unit_text_of(scalar(1)), "%");
    EXPECT_EQ(shown(scalar(0.25)), " = 25 %");
}

// Values.

TEST_F(unit_rendering, prints_a_value_in_default_units) {
    EXPECT_EQ(shown(scalar(1, in_N)), " = 1 kg m / s^2");
    EXPECT_EQ(shown(scalar(1.0 / 3.0, in_m)), " = 0.333333 m");
    EXPECT_EQ(shown(scalar(303.15, in_degK)), " = 303.15 degK");
}

TEST_F(unit_rendering, prints_a_plain_number_followed_by_a_blank) {
    EXPECT_EQ(shown(scalar(5)), " = 5 ");
}

TEST_F(unit_rendering, prints_a_vector) {
    EXPECT_EQ(shown(vector(1, -2, 0.5, in_m)), " = [ 1 , -2 , 0.5 ] m");
    EXPECT_EQ(shown(vector(0, 0, 0)), " = [ 0 , 0 , 0 ] ");
}

TEST_F(unit_rendering, prints_a_force_in_each_system) {
    EXPECT_EQ(shown_in(system_MKS, scalar(1, in_N)), " = 1 kg m / s^2");
    EXPECT_EQ(shown_in(system_cgs, scalar(1, in_N)), " = 100000 g cm / s^2");
    EXPECT_EQ(shown_in(system_FPS, scalar(1, in_N)), " = 0.224809 lbf");
    EXPECT_EQ(shown_in(system_IPS, scalar(1, in_N)), " = 0.224809 lbf");
}

TEST_F(unit_rendering, prints_a_radian_as_a_radian_in_each_system) {
    for (const unit_system system : all_systems)
        EXPECT_EQ(shown_in(system, scalar(1, in_rad)), " = 1 rad");
}

TEST_F(unit_rendering, ignores_exceptions_in_a_named_system) {
    set_exceptions("(lbf)");
    EXPECT_EQ(shown(scalar(1, in_N)), " = 0.224809 lbf");
    EXPECT_EQ(shown_in(system_MKS, scalar(1, in_N)), " = 1 kg m / s^2");
}

TEST_F(unit_rendering, converts_by_the_offset_of_an_exception) {
    set_exceptions("(degC)");
    EXPECT_EQ(shown(scalar(303.15, in_degK)), " = 30 degC");
}

TEST_F(unit_rendering, shows_an_exception_with_its_leading_blank) {
    set_exceptions("(Pa, N)");
    EXPECT_EQ(shown(scalar(2, in_N)), " = 2  N");
    EXPECT_EQ(shown(scalar(2, in_Pa)), " = 2 Pa");
}

TEST_F(unit_rendering, prints_a_temperature_difference_in_the_system_of_the_inch_with_the_offset_in_it) {
    set_unit_system(system_IPS);
    EXPECT_EQ(shown(scalar(10, in_degKdiff)), " = -441.67 degF"); // 10 * 1.8 - 459.67
    set_unit_system(system_FPS);
    EXPECT_EQ(shown(scalar(10, in_degKdiff)), " = 18 degR");
    set_unit_system(system_cgs);
    EXPECT_EQ(shown(scalar(10, in_degKdiff)), " = 10 degK");
    set_unit_system(system_MKS);
    EXPECT_EQ(shown(scalar(10, in_degKdiff)), " = 10 degKdiff");
}

// Requests.

TEST_F(unit_rendering, prints_a_request_as_typed) {
    EXPECT_EQ(requested(scalar(1.0668, in_m), "m").out, " = 1.0668 m");
    EXPECT_EQ(requested(scalar(1.0668, in_m), "in  ").out, " = 42 in  ");
    EXPECT_EQ(requested(scalar(1.0668, in_m), " in").out, " = 42  in");
    EXPECT_EQ(requested(scalar(9, {0, -1, 0, 1, 0, 0, 0, 0}), "km /hr; m").out, " = 32.4 km /hr");
}

TEST_F(unit_rendering, omits_the_comment_after_a_request) {
    EXPECT_EQ(requested(scalar(3, in_m), "m # in meters").out, " = 3 m ");
    EXPECT_EQ(requested(scalar(3, in_m), "cm# in centimeters\n").out, " = 300 cm");
}

TEST_F(unit_rendering, leaves_the_cursor_after_the_request) {
    work_text out;
    work_text err;
    const char* text = "cm; ft";
    cursor p(text);
    EXPECT_TRUE(print_value_with_requested_units(out.str, scalar(1, in_m), p, err.str, false));
    EXPECT_EQ(p.at, text + 2);
}

TEST_F(unit_rendering, refuses_a_request_that_is_no_unit) {
    const printed result = requested(scalar(1, in_m), "xyz; m");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n");
}

TEST_F(unit_rendering, quotes_an_unknown_request_up_to_the_statements_end) {
    EXPECT_EQ(requested(scalar(1, in_m), "  xyz + m # note").err,
              "ERROR IN REQUESTED OUTPUT: 'xyz + m ' not recognized.\n");
    EXPECT_EQ(requested(scalar(1, in_m), "2\nm").err, "ERROR IN REQUESTED OUTPUT: '2' not recognized.\n");
    work_text out;
    work_text err;
    const char* text = " xyz m; ft";
    cursor p(text);
    EXPECT_FALSE(print_value_with_requested_units(out.str, scalar(1, in_m), p, err.str, false));
    EXPECT_EQ(p.at, text + 6);
}

TEST_F(unit_rendering, refuses_an_incompatible_request) {
    const printed result = requested(scalar(1, in_m), "kg; m");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
}

TEST_F(unit_rendering, prints_an_incompatible_request_unchecked) {
    EXPECT_EQ(requested(scalar(2, in_m), "g", true).out, " = 2000 g");
}

TEST_F(unit_rendering, lets_moles_and_radians_through_for_a_plain_number) {
    EXPECT_EQ(requested(scalar(5), "mol").out, " = 5 mol");
    EXPECT_EQ(requested(scalar(1), "deg").out, " = 57.2958 deg");
    EXPECT_EQ(requested(scalar(5, in_mol), "rad").out, " = 5 rad");
}

TEST_F(unit_rendering, lets_a_difference_through_for_a_temperature) {
    EXPECT_EQ(requested(scalar(10, in_degK), "degKdiff").out, " = 10 degKdiff");
    EXPECT_EQ(requested(scalar(10, in_degKdiff), "degC").out, " = -263.15 degC");
}

TEST_F(unit_rendering, clears_an_earlier_error_and_appends_its_output) {
    work_text out;
    work_text err;
    out.append(" = 1 m");
    err.append("ERROR: earlier\n");
    cursor p("cm");
    EXPECT_TRUE(print_value_with_requested_units(out.str, scalar(1, in_m), p, err.str, false));
    EXPECT_EQ(out.view(), " = 1 m = 100 cm");
    EXPECT_EQ(err.view(), "");
}

TEST_F(unit_rendering, prints_infinities_and_nans) {
    EXPECT_EQ(shown(scalar(infinity_sentinel, in_m)), " = inf m");
    EXPECT_EQ(shown(scalar(-infinity_sentinel, in_m)), " = -inf m");
}

} // namespace
