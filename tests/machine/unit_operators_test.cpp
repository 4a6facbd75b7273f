// The operators that make quantities of numbers, numbers of quantities and vectors of scalars.

#include "machine/operators.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace {

using namespace metrify;

const dim_value overflowed = scalar(infinity_sentinel);
constexpr unit_scale in_feet = {0, 0.0, 4.0, {}, in_m}; // four to the meter, to be exact
constexpr unit_scale celsius = {0, -273.0, 1.0, {}, in_degK};

struct outcome {
    dim_value value;
    std::string err;
    std::size_t depth;
};

template <class Act>
outcome act(std::initializer_list<dim_value> operands, Act apply) {
    compile_ctx ctx;
    work_text err;
    err.append("an old message");
    for (const dim_value& operand : operands)
        push_value(operand, ctx);
    apply(ctx, err.str);
    outcome got = {{}, std::string(err.view()), ctx.stack.depth()};
    pop_value(got.value, ctx);
    return got;
}

outcome assign(const dim_value& value, const unit_scale& scale) {
    return act(
        {value},
        [&scale](compile_ctx& ctx, text_str*& err) {
            push_unit_scale(scale, ctx);
            stck_unit_assignment(ctx, err);
        });
}

outcome request(const dim_value& value, const unit_scale& scale) {
    return act(
        {value},
        [&scale](compile_ctx& ctx, text_str*& err) {
            push_unit_scale(scale, ctx);
            stck_request_units(ctx, err);
        });
}

outcome make_vector(std::initializer_list<dim_value> parts) {
    const int count = static_cast<int>(parts.size());
    return act(parts, [count](compile_ctx& ctx, text_str*& err) { stck_make_vector(ctx, count, err); });
}

void expect(const outcome& got, const std::string& message, const dim_value& value) {
    EXPECT_EQ(got.err, message);
    EXPECT_TRUE(equal(got.value, value)) << described(got.value);
    EXPECT_EQ(got.depth, 1u);
}

// Units after a number.

TEST(unit_assignment, converts_a_number_to_the_base_system) {
    expect(assign(scalar(10), in_feet), "", scalar(2.5, in_m));
    // An offset reaches the components that a scalar doesn't use too.
    expect(assign(scalar(20), celsius), "", {0, {293, 273, 273}, in_degK});
}

TEST(unit_assignment, converts_a_vector_component_by_component) {
    expect(assign(vector(4, 8, 12), in_feet), "", vector(1, 2, 3, in_m));
    expect(assign(vector(0, 7, 27), celsius), "", vector(273, 280, 300, in_degK));
}

TEST(unit_assignment, drops_the_angle_and_the_amount_of_the_number) {
    expect(assign(scalar(10, in_rad), in_feet), "", scalar(2.5, in_m));
    expect(assign(scalar(10, in_mol), in_feet), "", scalar(2.5, in_m));
}

TEST(unit_assignment, requires_a_dimensionless_value) {
    for (const exponents& dim : {in_s, in_kg, in_m, in_degK, in_degKdiff, in_C})
        expect(assign(scalar(0, dim), in_feet),
               "ERROR: Units assignment requires dimensionless value before it.\n", overflowed);
}

TEST(unit_assignment, reports_the_sentinel_in_value_offset_or_factor) {
    const std::string message = "ERROR: Numerical over or underflow while unit_assignment.\n";
    unit_scale scale = in_feet;
    expect(assign(overflowed, scale), message, overflowed);
    scale.offset = infinity_sentinel;
    expect(assign(scalar(1), scale), message, overflowed);
    scale = in_feet;
    scale.factor = infinity_sentinel;
    expect(assign(scalar(1), scale), message, overflowed);
}

TEST(unit_assignment, checks_the_dimension_before_the_sentinel) {
    expect(assign(scalar(infinity_sentinel, in_m), in_feet),
           "ERROR: Units assignment requires dimensionless value before it.\n", overflowed);
}

TEST(unit_assignment, clears_the_result_if_the_factor_is_zero) {
    unit_scale scale = in_feet;
    scale.factor = 0.0;
    expect(assign(scalar(1), scale), "ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.\n",
           scalar(0));
}

TEST(unit_assignment, treats_a_missing_value_as_zero) {
    compile_ctx ctx;
    work_text err;
    push_unit_scale(celsius, ctx);
    stck_unit_assignment(ctx, err.str);
    dim_value value;
    pop_value(value, ctx);
    EXPECT_EQ(err.view(), "");
    EXPECT_TRUE(equal(value, {0, {273, 273, 273}, in_degK})) << described(value);
}

// A value requested in a unit.

TEST(unit_request, makes_a_plain_number_of_a_value) {
    expect(request(scalar(2.5, in_m), in_feet), "", scalar(10));
    expect(request(vector(1, 2, 3, in_m), in_feet), "", vector(4, 8, 12));
}

TEST(unit_request, requires_units_that_agree_loosely) {
    const unit_scale number = {0, 0.0, 1.0, {}, in_plain};
    const unit_scale kelvin = {0, 0.0, 1.0, {}, in_degK};
    expect(request(scalar(3, in_rad), number), "", scalar(3));
    expect(request(scalar(3, in_mol), number), "", scalar(3));
    expect(request(scalar(3, in_degKdiff), kelvin), "", scalar(3));
}

TEST(unit_request, reports_other_units_and_keeps_those_asked_for) {
    expect(request(scalar(3, in_s), in_feet), "ERROR: Requested units incompatible.\n", scalar(12, in_m));
}

TEST(unit_request, does_not_let_a_zero_through) {
    expect(request(scalar(0), in_feet), "ERROR: Requested units incompatible.\n", scalar(0, in_m));
}

// Vectors.

TEST(vector_of_components, has_zeros_for_the_components_not_given) {
    expect(make_vector({}), "", vector(0, 0, 0));
    expect(make_vector({scalar(4, in_m)}), "", vector(4, 0, 0, in_m));
    expect(make_vector({scalar(4, in_m), scalar(5, in_m)}), "", vector(4, 5, 0, in_m));
    expect(make_vector({scalar(4, in_m), scalar(5, in_m), scalar(6, in_m)}), "", vector(4, 5, 6, in_m));
}

TEST(vector_of_components, gives_a_pure_zero_the_units_of_the_others) {
    expect(make_vector({scalar(1, in_m), scalar(0), scalar(3, in_m)}), "", vector(1, 0, 3, in_m));
    expect(make_vector({scalar(0), scalar(0), scalar(3, in_m)}), "", vector(0, 0, 3, in_m));
    expect(make_vector({scalar(0), scalar(3, in_m)}), "", vector(0, 3, 0, in_m));
}

TEST(vector_of_components, requires_the_same_units) {
    const std::string message = "ERROR:  All vector components must have same units.\n";
    expect(make_vector({scalar(1, in_m), scalar(2, in_s)}), message, scalar(0));
    expect(make_vector({scalar(1, in_m), scalar(2), scalar(3, in_m)}), message, scalar(0));
    expect(make_vector({scalar(1, in_m), scalar(2, in_m), scalar(3, in_s)}), message, scalar(0));
    expect(make_vector({scalar(0), scalar(2, in_m), scalar(3, in_s)}), message, scalar(0));
    expect(make_vector({scalar(1, in_m), scalar(0, in_s)}), message, scalar(0));
}

TEST(vector_of_components, has_the_exponents_of_the_first) {
    expect(make_vector({scalar(1, in_rad), scalar(2)}), "", vector(1, 2, 0, in_rad));
    expect(make_vector({scalar(1), scalar(2, in_rad)}), "", vector(1, 2, 0));
    expect(make_vector({scalar(1, in_degKdiff), scalar(2, in_degK)}), "", vector(1, 2, 0, in_degKdiff));
}

TEST(vector_of_components, requires_scalars) {
    const std::string message = "ERROR:  All vector components must be scalars.\n";
    expect(make_vector({vector(1, 2, 3)}), message, scalar(0));
    expect(make_vector({scalar(1), vector(1, 2, 3)}), message, scalar(0));
    expect(make_vector({scalar(1), scalar(1), vector(1, 2, 3)}), message, scalar(0));
    // A zero beside a vector becomes one.
    expect(make_vector({scalar(0), vector(1, 2, 3)}), message, scalar(0));
}

TEST(vector_of_components, checks_the_units_before_the_size) {
    expect(make_vector({vector(1, 2, 3, in_m), scalar(1, in_s)}),
           "ERROR:  All vector components must have same units.\n", scalar(0));
}

TEST(vector_of_components, treats_missing_components_as_zero) {
    compile_ctx ctx;
    work_text err;
    push_value(scalar(7, in_m), ctx);
    stck_make_vector(ctx, 3, err.str); // the only entry is the last component
    EXPECT_EQ(ctx.stack.depth(), 1u);
    dim_value value;
    pop_value(value, ctx);
    EXPECT_EQ(err.view(), "");
    EXPECT_TRUE(equal(value, vector(0, 0, 7, in_m))) << described(value);
}

// Normalization.

void expect_normalized(const exponents& from, const exponents& to) {
    dim_value value = scalar(1, from);
    normalize_dimensions(value);
    EXPECT_EQ(value.dim, to);
}

TEST(normalize_dimensions, keeps_a_bare_temperature_difference) {
    expect_normalized(in_degKdiff, in_degKdiff);
    expect_normalized({0, 0, 0, 0, 0, 0, 2, 0}, {0, 0, 0, 0, 0, 0, 2, 0});
}

TEST(normalize_dimensions, makes_a_difference_in_a_compound_a_plain_temperature) {
    expect_normalized({1, 0, 0, 0, 0, 0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0});
    expect_normalized({0, 1, 0, 0, 0, 0, 1, 0}, {0, 1, 0, 0, 1, 0, 0, 0});
    expect_normalized({0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 1, 0, 1, 0, 0, 0});
    expect_normalized({0, 0, 0, 1, 0, 0, -1, 0}, {0, 0, 0, 1, -1, 0, 0, 0});
    expect_normalized({0, 0, 0, 0, 2, 0, 1, 0}, {0, 0, 0, 0, 3, 0, 0, 0});
    expect_normalized({0, 0, 0, 0, 0, 1, 1, 0}, {0, 0, 0, 0, 1, 1, 0, 0});
    expect_normalized({0, 0, 0, 0, 0, 0, 1, 1}, {0, 0, 0, 0, 1, 0, 0, 1});
}

TEST(normalize_dimensions, drops_the_angle_beside_a_length) {
    expect_normalized({1, 0, 0, 1, 0, 0, 0, 0}, in_m);
    expect_normalized({2, -1, 0, -1, 0, 0, 0, 0}, {0, -1, 0, -1, 0, 0, 0, 0});
    expect_normalized({1, -1, 0, 0, 0, 0, 0, 0}, {1, -1, 0, 0, 0, 0, 0, 0});
}

TEST(normalize_dimensions, leaves_kind_and_components) {
    dim_value value = vector(1, 2, 3, {1, 0, 0, 1, 0, 0, 1, 0});
    normalize_dimensions(value);
    EXPECT_TRUE(equal(value, vector(1, 2, 3, {0, 0, 0, 1, 1, 0, 0, 0}))) << described(value);
}

// Several operators in one program.

TEST(operators_in_a_program, take_an_angle_times_a_length_as_a_length_and_a_difference_as_a_temperature) {
    EXPECT_EQ(run("3 degKdiff * (2 m)"), "[  1 ] 3 degKdiff * (2 m)\n        = 6 m degK\n\n");
    EXPECT_EQ(run("3 rad * (2 m)"), "[  1 ] 3 rad * (2 m)\n        = 6 m\n\n");
}

} // namespace
