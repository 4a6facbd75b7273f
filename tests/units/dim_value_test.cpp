#include "tests/testing.h"
#include "units/dim_value.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace metrify;

using components = std::array<double, 3>;

exponents with(exponents dim, std::size_t index, double exponent) {
    dim[index] = exponent;
    return dim;
}

void expect_equal(const dim_value& v, const dim_value& expected) {
    EXPECT_EQ(v.kind, expected.kind);
    EXPECT_EQ(v.comp, expected.comp);
    EXPECT_EQ(v.dim, expected.dim);
}

TEST(dim_value, is_a_dimensionless_scalar_zero_at_first_and_when_cleared) {
    expect_equal(dim_value(), scalar(0.0));
    dim_value v = vector(1, 2, 3, in_N);
    dim_clear(v);
    expect_equal(v, scalar(0.0));
}

TEST(dim_value, is_copied_as_a_whole) {
    const dim_value src = vector(1, 2, 3, in_N);
    dim_value dst;
    dim_copy(src, dst);
    expect_equal(dst, src);
}

TEST(dim_value, has_the_exponents_in_their_fixed_order) {
    EXPECT_EQ(dim_angle, 0u);
    EXPECT_EQ(dim_time, 1u);
    EXPECT_EQ(dim_mass, 2u);
    EXPECT_EQ(dim_length, 3u);
    EXPECT_EQ(dim_temperature, 4u);
    EXPECT_EQ(dim_amount, 5u);
    EXPECT_EQ(dim_temperature_difference, 6u);
    EXPECT_EQ(dim_charge, 7u);
}

TEST(overflow_value, is_a_cleared_value_with_the_sentinel) {
    expect_equal(overflow_value(), scalar(infinity_sentinel));
    EXPECT_TRUE(std::isinf(infinity_sentinel) && infinity_sentinel > 0);
}

// Comparison.

TEST(same_units_strict, compares_all_eight_exponents) {
    EXPECT_TRUE(same_units_strict(scalar(1, in_N), scalar(2, in_N)));
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_FALSE(same_units_strict(scalar(1, in_N), scalar(1, with(in_N, i, 5)))) << i;
}

TEST(same_units_strict, distinguishes_a_radian_from_a_plain_number) {
    EXPECT_FALSE(same_units_strict(scalar(1, in_rad), scalar(1)));
}

TEST(same_units_strict, distinguishes_a_temperature_from_a_difference) {
    EXPECT_FALSE(same_units_strict(scalar(1, in_degK), scalar(1, in_degKdiff)));
}

TEST(same_units_strict, ignores_kind_and_components) {
    EXPECT_TRUE(same_units_strict(scalar(1, in_m), vector(4, 5, 6, in_m)));
}

TEST(same_units_loose, ignores_angle_and_amount) {
    EXPECT_TRUE(same_units_loose(scalar(1, in_rad), scalar(1)));
    EXPECT_TRUE(same_units_loose(scalar(1, in_mol), scalar(1)));
    EXPECT_TRUE(same_units_loose(scalar(1, with(in_m, dim_angle, -3)), scalar(1, with(in_m, dim_amount, 2))));
}

TEST(same_units_loose, compares_time_mass_length_and_charge) {
    for (const base_dimension i : {dim_time, dim_mass, dim_length, dim_charge})
        EXPECT_FALSE(same_units_loose(scalar(1, with(in_N, i, 5)), scalar(1, in_N))) << i;
}

TEST(same_units_loose, compares_the_sum_of_the_temperature_exponents) {
    EXPECT_TRUE(same_units_loose(scalar(1, in_degK), scalar(1, in_degKdiff)));
    EXPECT_FALSE(same_units_loose(scalar(1, in_degK), scalar(1)));
    EXPECT_FALSE(same_units_loose(scalar(1, in_degKdiff), scalar(1)));
    EXPECT_TRUE(same_units_loose(scalar(1, with(in_degK, dim_temperature_difference, -1)), scalar(1)));
    EXPECT_TRUE(same_units_loose(scalar(1, with(in_degK, dim_temperature_difference, 1)),
                                 scalar(1, with({}, dim_temperature, 2))));
}

TEST(comparisons, tolerate_differences_up_to_1e_minus_5) {
    dim_value a = scalar(1, with({}, dim_length, 0.333333));
    dim_value b = scalar(1, with({}, dim_length, 0.3333333));
    EXPECT_TRUE(same_units_strict(a, b));
    EXPECT_TRUE(same_units_loose(a, b));
    EXPECT_TRUE(same_units_without_angle(a, b));
    dim_value c = scalar(1, with({}, dim_length, 2));
    dim_value d = scalar(1, with({}, dim_length, 2.0001));
    EXPECT_FALSE(same_units_strict(c, d));
    EXPECT_FALSE(same_units_loose(c, d));
    EXPECT_FALSE(same_units_without_angle(c, d));
}

TEST(comparisons, have_their_bound_at_1e_minus_5) {
    EXPECT_TRUE(same_units_strict(scalar(1, with({}, dim_time, 0.9e-5)), scalar(1)));
    EXPECT_FALSE(same_units_strict(scalar(1, with({}, dim_time, 1.1e-5)), scalar(1)));
    EXPECT_TRUE(same_units_strict(scalar(1, with({}, dim_time, 1e-5)), scalar(1)));
}

TEST(same_units_without_angle, clears_the_angle_of_both_if_the_rest_agrees) {
    dim_value a = scalar(1, with(in_m, dim_angle, 1));
    dim_value b = scalar(2, with(in_m, dim_angle, -2));
    EXPECT_TRUE(same_units_without_angle(a, b));
    expect_equal(a, scalar(1, in_m));
    expect_equal(b, scalar(2, in_m));
}

TEST(same_units_without_angle, leaves_both_untouched_if_the_rest_differs) {
    for (std::size_t i = 1; i < 8; ++i) {
        const exponents dim = with(in_N, dim_angle, 1);
        dim_value a = scalar(1, dim);
        dim_value b = scalar(2, with(dim, i, 5));
        EXPECT_FALSE(same_units_without_angle(a, b)) << i;
        expect_equal(a, scalar(1, dim));
        expect_equal(b, scalar(2, with(dim, i, 5)));
    }
}

TEST(same_units_without_angle, treats_a_temperature_and_a_difference_as_different) {
    dim_value a = scalar(1, in_degK);
    dim_value b = scalar(1, in_degKdiff);
    EXPECT_FALSE(same_units_without_angle(a, b));
}

TEST(units_agree_or_zero, holds_if_the_units_agree_loosely) {
    dim_value a = scalar(1, in_rad);
    dim_value b = scalar(2);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(1, in_rad));
    expect_equal(b, scalar(2));
}

TEST(units_agree_or_zero, gives_a_pure_zero_the_units_of_the_other_operand) {
    dim_value a = scalar(0);
    dim_value b = scalar(5, in_m);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(0, in_m));
    expect_equal(b, scalar(5, in_m));
    dim_value c = scalar(5, in_m);
    dim_value d = scalar(0);
    EXPECT_TRUE(units_agree_or_zero(c, d));
    expect_equal(c, scalar(5, in_m));
    expect_equal(d, scalar(0, in_m));
}

TEST(units_agree_or_zero, makes_a_zero_scalar_a_zero_vector_in_meters) {
    dim_value a = scalar(0);
    dim_value b = vector(1, 2, 3, in_m);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    expect_equal(a, {b.kind, {0, 0, 0}, in_m});
    expect_equal(b, vector(1, 2, 3, in_m));
}

TEST(units_agree_or_zero, changes_the_kind_also_if_only_that_differs) {
    dim_value a = vector(1, 2, 3);
    dim_value b = scalar(0);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    EXPECT_NE(b.kind, 0);
    expect_equal(a, vector(1, 2, 3));
}

TEST(units_agree_or_zero, gives_no_such_treatment_to_a_zero_with_units) {
    dim_value a = scalar(0, in_m);
    dim_value b = scalar(5, in_s);
    EXPECT_FALSE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(0, in_m));
    expect_equal(b, scalar(5, in_s));
}

TEST(units_agree_or_zero, fails_for_two_values_of_different_units) {
    dim_value a = scalar(1);
    dim_value b = scalar(5, in_s);
    EXPECT_FALSE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(1));
    expect_equal(b, scalar(5, in_s));
}

TEST(units_agree_or_zero, turns_the_first_of_a_zero_and_a_zero_with_units) {
    dim_value a = scalar(0);
    dim_value b = scalar(0, in_s);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(0, in_s));
    expect_equal(b, scalar(0, in_s));
}

TEST(units_agree_or_zero, treats_a_zero_vector_as_pure_zero) {
    dim_value a = vector(0, 0, 0);
    dim_value b = scalar(5, in_s);
    EXPECT_TRUE(units_agree_or_zero(a, b));
    expect_equal(a, scalar(0, in_s));
}

TEST(component_units_agree, holds_if_the_units_agree_loosely) {
    EXPECT_TRUE(component_units_agree(vector(1, 2, 3, in_m), 2, scalar(5, in_m), 1));
    EXPECT_TRUE(component_units_agree(vector(1, 2, 3), 2, scalar(5, in_rad), 1));
}

TEST(component_units_agree, lets_a_mismatch_through_if_the_other_components_are_empty) {
    EXPECT_TRUE(component_units_agree(vector(1, 0, 0, in_m), 1, scalar(5, in_s), 1));
    EXPECT_TRUE(component_units_agree(vector(0, 1, 0, in_m), 2, scalar(5, in_s), 1));
    EXPECT_TRUE(component_units_agree(vector(0, 0, 1, in_m), 3, scalar(5, in_s), 1));
}

TEST(component_units_agree, tests_the_two_other_components) {
    for (int component = 1; component <= 3; ++component) {
        for (int filled = 1; filled <= 3; ++filled) {
            dim_value v = vector(0, 0, 0, in_m);
            v.comp[static_cast<std::size_t>(filled - 1)] = 1.0;
            EXPECT_EQ(component_units_agree(v, component, scalar(5, in_s), 1), component == filled);
            EXPECT_EQ(component_units_agree(scalar(5, in_s), 1, v, component), component == filled);
        }
    }
}

TEST(component_units_agree, tests_no_component_of_a_value_without_a_component_number) {
    EXPECT_TRUE(component_units_agree(vector(1, 2, 3, in_m), 0, vector(4, 5, 6, in_s), 0));
    EXPECT_TRUE(component_units_agree(vector(1, 2, 3, in_m), 4, vector(4, 5, 6, in_s), -1));
    EXPECT_FALSE(component_units_agree(vector(1, 2, 3, in_m), 0, vector(4, 5, 6, in_s), 1));
    EXPECT_FALSE(component_units_agree(vector(1, 2, 3, in_m), 1, vector(4, 5, 6, in_s), 0));
}

TEST(component_units_agree, treats_a_not_a_number_as_nonzero) {
    EXPECT_FALSE(component_units_agree(vector(1, std::nan(""), 0, in_m), 1, scalar(5, in_s), 1));
}

TEST(is_dimensionless, holds_for_angles_and_amounts) {
    EXPECT_TRUE(is_dimensionless(scalar(1)));
    EXPECT_TRUE(is_dimensionless(scalar(1, in_rad)));
    EXPECT_TRUE(is_dimensionless(scalar(1, in_mol)));
    EXPECT_TRUE(is_dimensionless(vector(1, 2, 3, with(in_rad, dim_amount, -2))));
}

TEST(is_dimensionless, requires_the_other_six_exponents_to_be_exactly_zero) {
    for (const base_dimension i :
         {dim_time, dim_mass, dim_length, dim_temperature, dim_temperature_difference, dim_charge}) {
        EXPECT_FALSE(is_dimensionless(scalar(1, with({}, i, 1)))) << i;
        EXPECT_FALSE(is_dimensionless(scalar(1, with({}, i, 1e-9)))) << i;
    }
    EXPECT_FALSE(is_dimensionless(scalar(1, {0, 0, 0, 0, 1, 0, -1, 0})));
}

TEST(is_plain_radian, holds_for_the_first_power_of_the_angle_alone) {
    EXPECT_TRUE(is_plain_radian(scalar(7, in_rad)));
    EXPECT_FALSE(is_plain_radian(scalar(7)));
    EXPECT_FALSE(is_plain_radian(scalar(7, with({}, dim_angle, 2))));
    EXPECT_FALSE(is_plain_radian(scalar(7, with({}, dim_angle, 1 + 1e-9))));
    for (std::size_t i = 1; i < 8; ++i)
        EXPECT_FALSE(is_plain_radian(scalar(7, with(in_rad, i, 1e-9)))) << i;
}

TEST(is_pure_zero, requires_components_and_exponents_to_be_exactly_zero) {
    EXPECT_TRUE(is_pure_zero(scalar(0)));
    EXPECT_TRUE(is_pure_zero(scalar(-0.0)));
    EXPECT_FALSE(is_pure_zero(scalar(1e-300)));
    EXPECT_FALSE(is_pure_zero({0, {0, 1, 0}, {}}));
    EXPECT_FALSE(is_pure_zero({0, {0, 0, 1}, {}}));
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_FALSE(is_pure_zero(scalar(0, with({}, i, 1e-9)))) << i;
}

TEST(is_pure_zero, ignores_the_kind) {
    EXPECT_TRUE(is_pure_zero(vector(0, 0, 0)));
}

// Power.

dim_value power(const dim_value& base, double p) {
    dim_value result = vector(7, 7, 7, in_N);
    dim_pow(result, base, p);
    return result;
}

TEST(dim_pow, raises_value_and_exponents) {
    expect_equal(power(scalar(3, in_N), 2), scalar(9, {0, -4, 2, 2, 0, 0, 0, 0}));
    expect_equal(power(scalar(4, in_m), 0.5), scalar(2, with({}, dim_length, 0.5)));
    expect_equal(power(scalar(4, in_m), -1), scalar(0.25, with({}, dim_length, -1)));
}

TEST(dim_pow, raises_a_negative_base_to_a_whole_power) {
    expect_equal(power(scalar(-8, in_m), 3), scalar(-512, with({}, dim_length, 3)));
}

TEST(dim_pow, overflows_for_a_negative_base_and_a_power_that_is_not_whole) {
    expect_equal(power(scalar(-8, in_m), 1.0 / 3.0), scalar(infinity_sentinel));
}

TEST(dim_pow, overflows_for_the_sentinel_as_base) {
    expect_equal(power(scalar(infinity_sentinel, in_m), 2), scalar(infinity_sentinel));
    expect_equal(power(scalar(infinity_sentinel, in_m), 0), scalar(infinity_sentinel));
}

TEST(dim_pow, gives_zero_for_zero_to_the_power_zero) {
    expect_equal(power(scalar(0, in_m), 0), scalar(0));
    EXPECT_NE(power(vector(0, 2, 3, in_m), 0).kind, 0);
    EXPECT_EQ(power(vector(0, 2, 3, in_m), 0).comp, (components{0, 0, 0}));
    EXPECT_EQ(power(vector(0, 2, 3, in_m), 0).dim, in_plain);
}

TEST(dim_pow, gives_one_for_anything_else_to_the_power_zero) {
    EXPECT_EQ(power(scalar(5, in_m), 0).comp[0], 1.0);
    EXPECT_EQ(power(scalar(5, in_m), 0).dim, in_plain);
}

TEST(dim_pow, gives_zero_for_zero_to_a_positive_power) {
    expect_equal(power(scalar(0, in_m), 2), scalar(0, with({}, dim_length, 2)));
}

TEST(dim_pow, acts_on_a_vector_component_by_component) {
    const dim_value v = vector(1, 2, 3, in_m);
    expect_equal(power(v, 2), {v.kind, {1, 4, 9}, with({}, dim_length, 2)});
}

TEST(dim_pow, makes_an_overflowed_vector_a_scalar_with_three_sentinels) {
    expect_equal(power(vector(-1, 2, 3, in_m), 0.5),
                 {0, {infinity_sentinel, infinity_sentinel, infinity_sentinel}, {}});
    expect_equal(power(vector(infinity_sentinel, 2, 3, in_m), 2),
                 {0, {infinity_sentinel, infinity_sentinel, infinity_sentinel}, {}});
}

TEST(dim_pow, judges_a_vector_by_its_first_component) {
    const dim_value result = power(vector(4, -4, 9), 0.5);
    EXPECT_NE(result.kind, 0);
    EXPECT_EQ(result.comp[0], 2.0);
    EXPECT_TRUE(std::isnan(result.comp[1]));
    EXPECT_EQ(result.comp[2], 3.0);
}

// Conversion.

unit_scale scale(double factor, double offset, const exponents& dim) {
    unit_scale s;
    s.factor = factor;
    s.offset = offset;
    s.dim = dim;
    return s;
}

TEST(conversion_from_the_base_system, multiplies_and_adds) {
    dim_value out = vector(7, 7, 7, in_N);
    convert_non_affine_FromMKS_vec_full(scalar(300, in_degK), out, scale(1.0, -273.15, in_degK));
    EXPECT_NEAR(out.comp[0], 26.85, 1e-12);
    EXPECT_EQ(out.kind, 0);
    EXPECT_EQ(out.dim, in_degK);
    convert_non_affine_FromMKS_vec_full(scalar(300, in_degK), out, scale(1.8, -459.67, in_degK));
    EXPECT_DOUBLE_EQ(out.comp[0], 80.33);
}

TEST(conversion_from_the_base_system, gives_the_other_components_of_a_scalar_the_offset) {
    dim_value out;
    convert_non_affine_FromMKS_vec_full(scalar(300, in_degK), out, scale(1.0, -273.15, in_degK));
    EXPECT_EQ(out.comp[1], -273.15);
    EXPECT_EQ(out.comp[2], -273.15);
}

TEST(conversion_from_the_base_system, converts_a_vector_and_adopts_the_exponents_of_the_scale) {
    dim_value out;
    const dim_value in = vector(1, 2, 3, in_m);
    convert_non_affine_FromMKS_vec_full(in, out, scale(100.0, 0.0, in_s));
    expect_equal(out, {in.kind, {100, 200, 300}, in_s});
}

TEST(conversion_from_the_base_system, knows_no_failure) {
    dim_value out;
    convert_non_affine_FromMKS_vec_full(scalar(5, in_m), out, scale(0.0, 0.0, in_m));
    expect_equal(out, scalar(0, in_m));
}

TEST(conversion_to_the_base_system, subtracts_and_divides) {
    work_text err;
    dim_value out;
    convert_non_affine_ToMKS_vec_full(scalar(5), out, scale(1.0, -273.15, in_degK), err.str);
    EXPECT_DOUBLE_EQ(out.comp[0], 278.15);
    EXPECT_EQ(out.dim, in_degK);
    convert_non_affine_ToMKS_vec_full(scalar(10), out, scale(1.8, -459.67, in_degK), err.str);
    EXPECT_DOUBLE_EQ(out.comp[0], (10 + 459.67) / 1.8);
    EXPECT_EQ(err.view(), "");
}

TEST(conversion_to_the_base_system, drops_the_exponents_of_the_input) {
    work_text err;
    dim_value out;
    const dim_value in = vector(2, 4, 6, in_rad);
    convert_non_affine_ToMKS_vec_full(in, out, scale(2.0, 0.0, in_m), err.str);
    expect_equal(out, {in.kind, {1, 2, 3}, in_m});
}

TEST(conversion_to_the_base_system, reports_a_factor_of_zero_and_clears_the_result) {
    work_text err;
    err.append("before ");
    dim_value out = vector(1, 2, 3, in_m);
    convert_non_affine_ToMKS_vec_full(scalar(5), out, scale(0.0, 1.0, in_m), err.str);
    EXPECT_EQ(err.view(), "before ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.\n");
    expect_equal(out, scalar(0));
}

TEST(conversions, may_have_one_record_for_input_and_output) {
    work_text err;
    dim_value v = vector(1, 2, 3, in_m);
    convert_non_affine_FromMKS_vec_full(v, v, scale(100.0, 0.0, in_m));
    EXPECT_EQ(v.comp, (components{100, 200, 300}));
    convert_non_affine_ToMKS_vec_full(v, v, scale(100.0, 0.0, in_m), err.str);
    EXPECT_EQ(v.comp, (components{1, 2, 3}));
}

// Integers in exponents.

TEST(packed_numbers, are_stored_in_three_exponents_of_a_zero_record) {
    expect_equal(pack_three_ints(68, -1, 3), scalar(0, {0, 0, 0, 0, -1, 3, 0, 68}));
    const packed_call call = unpack_three_ints(pack_three_ints(68, -1, 3));
    EXPECT_EQ(call.function, 68);
    EXPECT_EQ(call.call_class, -1);
    EXPECT_EQ(call.count, 3);
}

TEST(packed_numbers, are_stored_in_two_exponents_of_a_zero_record) {
    expect_equal(pack_two_ints(201, 2), scalar(0, {0, 0, 0, 0, 0, 0, 2, 201}));
    const packed_reference reference = unpack_two_ints(pack_two_ints(201, 2));
    EXPECT_EQ(reference.number, 201);
    EXPECT_EQ(reference.component, 2);
}

TEST(packed_numbers, keep_the_bounds_of_32_bits) {
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(unpack_three_ints(pack_three_ints(most, least, 0)).function, most);
    EXPECT_EQ(unpack_three_ints(pack_three_ints(most, least, 0)).call_class, least);
}

TEST(packed_numbers, are_truncated_towards_zero) {
    dim_value v;
    v.dim = {0, 0, 0, 0, -2.9, 0.9, -1.5, 2.9};
    EXPECT_EQ(unpack_three_ints(v).function, 2);
    EXPECT_EQ(unpack_three_ints(v).call_class, -2);
    EXPECT_EQ(unpack_three_ints(v).count, 0);
    EXPECT_EQ(unpack_two_ints(v).number, 2);
    EXPECT_EQ(unpack_two_ints(v).component, -1);
}

} // namespace
