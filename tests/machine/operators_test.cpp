// The operators on quantities, each on a separate stack.

#include "machine/operators.h"
#include "tests/testing.h"
#include "units/unit_system.h"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>

namespace {

using namespace metrify;

using binary_operator = void (*)(compile_ctx&, text_str*&);

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
const dim_value overflowed = scalar(infinity_sentinel);

/// The state after an operator.
struct outcome {
    dim_value value;
    std::string err;
    std::size_t depth; // of the stack, above the value that the operator must not access
};

/// True if the outcome is a message beside a result.
testing::AssertionResult fails(const outcome& got, const std::string& message, const dim_value& result) {
    if (got.err != message)
        return testing::AssertionFailure() << got.err;
    if (!equal(got.value, result))
        return testing::AssertionFailure() << described(got.value);
    return got.depth == 1 ? testing::AssertionSuccess() : testing::AssertionFailure() << got.depth;
}

testing::AssertionResult gives(const outcome& got, const dim_value& result) {
    return fails(got, "", result);
}

outcome taken_from(compile_ctx& ctx, const work_text& err, std::size_t below) {
    outcome got = {{}, std::string(err.view()), ctx.stack.depth() - below};
    pop_value(got.value, ctx);
    return got;
}

class operators : public testing::Test {
  protected:
    operators() { reset_unit_state(); }
    ~operators() override { reset_unit_state(); }

    // There is one value below the operands, and an old message in err.
    template <class Act>
    static outcome act(std::initializer_list<dim_value> operands, Act apply) {
        compile_ctx ctx;
        work_text err;
        err.append("an old message");
        push_value(scalar(12345), ctx);
        for (const dim_value& operand : operands)
            push_value(operand, ctx);
        apply(ctx, err.str);
        const outcome got = taken_from(ctx, err, 1);
        dim_value below;
        pop_value(below, ctx);
        EXPECT_TRUE(equal(below, scalar(12345)));
        return got;
    }

    static outcome add(const dim_value& l, const dim_value& r) { return act({l, r}, stck_add); }
    static outcome subtract(const dim_value& l, const dim_value& r) { return act({l, r}, stck_subtract); }
    static outcome multiply(const dim_value& l, const dim_value& r) { return act({l, r}, stck_multiply); }
    static outcome divide(const dim_value& l, const dim_value& r) { return act({l, r}, stck_divide); }
    static outcome power(const dim_value& b, const dim_value& e) { return act({b, e}, stck_exponentiate); }
    static outcome negate(const dim_value& v) { return act({v}, stck_negate); }
};

constexpr const char* add_overflow = "ERROR:  Numerical over or underflow while adding.\n";
constexpr const char* subtract_overflow = "ERROR: Numerical over or underflow while subtracting.\n";
constexpr const char* multiply_overflow = "ERROR: Numerical over or underflow while multiplying.\n";
constexpr const char* divide_overflow = "ERROR: Numerical over or underflow while dividing.\n";
constexpr const char* power_overflow = "ERROR: Numerical over or underflow while exponentiating.\n";
constexpr const char* negate_overflow = "ERROR: Numerical over or underflow while negating.\n";

TEST_F(operators, take_a_missing_operand_as_zero) {
    struct {
        binary_operator apply;
        dim_value left, result;
    } const cases[] = {
        // The only operand is the right one; the left one pops as a cleared record.
        {stck_add, scalar(5, in_m), scalar(5, in_m)}, {stck_subtract, scalar(5, in_m), scalar(-5, in_m)},
        {stck_multiply, scalar(5), scalar(0)},        {stck_divide, scalar(5), scalar(0)},
        {stck_exponentiate, scalar(5), scalar(0)},
    };
    for (const auto& c : cases) {
        compile_ctx ctx;
        work_text err;
        push_value(c.left, ctx);
        c.apply(ctx, err.str);
        EXPECT_TRUE(gives(taken_from(ctx, err, 0), c.result));
    }
}

TEST_F(operators, leave_one_result_on_an_empty_stack) {
    for (const binary_operator apply :
         {stck_add, stck_subtract, stck_multiply, stck_exponentiate, stck_negate}) {
        compile_ctx ctx;
        work_text err;
        apply(ctx, err.str);
        const outcome got = taken_from(ctx, err, 0);
        EXPECT_EQ(got.err, "");
        EXPECT_EQ(got.depth, 1u);
        EXPECT_EQ(got.value.comp[0], 0.0);
        EXPECT_EQ(got.value.dim, in_plain);
    }
}

// Sums and differences.

TEST_F(operators, add_component_by_component) {
    EXPECT_TRUE(gives(add(scalar(2, in_m), scalar(3, in_m)), scalar(5, in_m)));
    EXPECT_TRUE(gives(add(vector(1, 2, 3, in_N), vector(10, 20, 30, in_N)), vector(11, 22, 33, in_N)));
}

TEST_F(operators, subtract_the_upper_from_the_lower) {
    EXPECT_TRUE(gives(subtract(scalar(2, in_m), scalar(3, in_m)), scalar(-1, in_m)));
    EXPECT_TRUE(gives(subtract(vector(1, 2, 3, in_N), vector(10, 20, 30, in_N)), vector(-9, -18, -27, in_N)));
}

TEST_F(operators, give_a_pure_zero_the_units_of_the_other_operand) {
    EXPECT_TRUE(gives(add(scalar(0), scalar(5, in_m)), scalar(5, in_m)));
    EXPECT_TRUE(gives(add(scalar(5, in_m), scalar(0)), scalar(5, in_m)));
    EXPECT_TRUE(gives(subtract(scalar(0), scalar(5, in_m)), scalar(-5, in_m)));
    EXPECT_TRUE(gives(subtract(scalar(5, in_m), scalar(0)), scalar(5, in_m)));
}

TEST_F(operators, give_a_pure_zero_the_kind_of_the_other_operand) {
    EXPECT_TRUE(gives(add(vector(1, 2, 3), scalar(0)), vector(1, 2, 3)));
    EXPECT_TRUE(gives(add(scalar(0), vector(1, 2, 3, in_m)), vector(1, 2, 3, in_m)));
    EXPECT_TRUE(gives(subtract(scalar(0), vector(1, 2, 3, in_m)), vector(-1, -2, -3, in_m)));
    EXPECT_TRUE(gives(add(vector(0, 0, 0), scalar(5, in_m)), scalar(5, in_m)));
}

TEST_F(operators, take_a_zero_with_units_as_no_pure_zero) {
    EXPECT_TRUE(fails(add(scalar(0, in_m), scalar(5, in_s)),
                      "ERROR:  Adding incompatible units: 'm' AND 's'.\n", scalar(0)));
}

TEST_F(operators, let_the_left_operand_decide_on_angle_and_amount) {
    EXPECT_TRUE(gives(add(scalar(1, in_rad), scalar(1)), scalar(2, in_rad)));
    EXPECT_TRUE(gives(add(scalar(1), scalar(1, in_rad)), scalar(2)));
    EXPECT_TRUE(gives(subtract(scalar(1, in_mol), scalar(3)), scalar(-2, in_mol)));
    EXPECT_TRUE(gives(subtract(scalar(1), scalar(3, in_mol)), scalar(-2)));
}

TEST_F(operators, let_the_left_operand_decide_on_the_kind_of_temperature) {
    EXPECT_TRUE(gives(add(scalar(300, in_degK), scalar(5, in_degKdiff)), scalar(305, in_degK)));
    EXPECT_TRUE(gives(add(scalar(5, in_degKdiff), scalar(300, in_degK)), scalar(305, in_degKdiff)));
}

TEST_F(operators, quote_both_units_that_disagree) {
    EXPECT_TRUE(fails(add(scalar(3, in_m), scalar(1, in_rad)),
                      "ERROR:  Adding incompatible units: 'm' AND 'rad'.\n", scalar(0)));
    EXPECT_TRUE(fails(subtract(scalar(3, in_N), scalar(1)),
                      "ERROR: Subtracting incompatible units: 'kg m / s^2' AND 'Dimensionless'.\n",
                      scalar(0)));
}

TEST_F(operators, quote_units_in_the_current_system) {
    set_unit_system(system_FPS);
    EXPECT_TRUE(fails(add(scalar(3, in_m), scalar(1, in_N)),
                      "ERROR:  Adding incompatible units: 'ft' AND 'lbf'.\n", scalar(0)));
}

TEST_F(operators, check_the_units_before_the_size_for_operands_of_one_size_only) {
    const char* const adding_sizes = "ERROR:  Adding different size vectors.\n";
    const char* const subtracting_sizes = "ERROR:  Subtracting different size vectors.\n";
    EXPECT_TRUE(fails(add(vector(1, 2, 3), scalar(4)), adding_sizes, scalar(0)));
    EXPECT_TRUE(fails(add(vector(1, 2, 3, in_m), scalar(4, in_s)), adding_sizes, scalar(0)));
    EXPECT_TRUE(fails(subtract(scalar(4), vector(1, 2, 3)), subtracting_sizes, scalar(0)));
    EXPECT_TRUE(fails(subtract(scalar(4, in_s), vector(1, 2, 3, in_m)), subtracting_sizes, scalar(0)));
    EXPECT_TRUE(fails(add(vector(1, 2, 3, in_m), vector(1, 2, 3, in_s)),
                      "ERROR:  Adding incompatible units: 'm' AND 's'.\n", scalar(0)));
}

TEST_F(operators, report_an_overflowed_term_before_other_errors) {
    EXPECT_TRUE(fails(add(overflowed, scalar(1, in_m)), add_overflow, overflowed));
    EXPECT_TRUE(fails(add(vector(1, 2, 3, in_m), overflowed), add_overflow, overflowed));
    EXPECT_TRUE(fails(subtract(overflowed, scalar(1)), subtract_overflow, overflowed));
    EXPECT_TRUE(fails(subtract(scalar(1), overflowed), subtract_overflow, overflowed));
}

TEST_F(operators, let_a_sum_overflow_unnoticed) {
    EXPECT_TRUE(gives(add(scalar(1.5e308), scalar(1.5e308)), overflowed));
    EXPECT_TRUE(gives(subtract(scalar(1.5e308), scalar(-1.5e308)), overflowed));
}

TEST_F(operators, test_only_the_first_component_for_the_sentinel) {
    EXPECT_TRUE(
        gives(add(vector(1, infinity_sentinel, 0), vector(1, 1, 0)), vector(2, infinity_sentinel, 0)));
    EXPECT_TRUE(gives(multiply(vector(1, infinity_sentinel, 0), scalar(2)), vector(2, infinity_sentinel, 0)));
    EXPECT_TRUE(gives(divide(vector(1, infinity_sentinel, 0), scalar(2)), vector(0.5, infinity_sentinel, 0)));
    EXPECT_TRUE(gives(negate(vector(1, infinity_sentinel, 2)), vector(-1, -infinity_sentinel, -2)));
}

TEST_F(operators, never_report_minus_infinity_and_not_a_number) {
    EXPECT_TRUE(gives(add(scalar(-infinity_sentinel), scalar(1)), scalar(-infinity_sentinel)));
    EXPECT_TRUE(gives(multiply(scalar(-infinity_sentinel), scalar(2)), scalar(-infinity_sentinel)));
    EXPECT_TRUE(gives(negate(scalar(-infinity_sentinel)), overflowed));
    for (const binary_operator apply : {stck_add, stck_subtract, stck_multiply, stck_divide}) {
        const outcome got = act({scalar(not_a_number), scalar(2)}, apply);
        EXPECT_EQ(got.err, "");
        EXPECT_TRUE(std::isnan(got.value.comp[0]));
    }
}

// Products and quotients.

TEST_F(operators, multiply_values_and_add_exponents) {
    EXPECT_TRUE(gives(multiply(scalar(2, in_N), scalar(3, in_m)), scalar(6, in_J)));
    EXPECT_TRUE(gives(multiply(scalar(2, {1, 1, 1, 0, 1, 1, 0, 1}), scalar(3, {1, 1, 1, 0, 1, 1, 0, 1})),
                      scalar(6, {2, 2, 2, 0, 2, 2, 0, 2})));
}

TEST_F(operators, divide_values_and_subtract_exponents) {
    EXPECT_TRUE(gives(divide(scalar(6, in_J), scalar(3, in_m)), scalar(2, in_N)));
    EXPECT_TRUE(gives(divide(scalar(6, in_m), scalar(3, in_m)), scalar(2)));
}

TEST_F(operators, scale_a_vector_from_either_side) {
    EXPECT_TRUE(gives(multiply(vector(1, 2, 3, in_m), scalar(2, in_N)), vector(2, 4, 6, in_J)));
    EXPECT_TRUE(gives(multiply(scalar(2, in_N), vector(1, 2, 3, in_m)), vector(2, 4, 6, in_J)));
    EXPECT_TRUE(gives(divide(vector(1, 2, 3, in_J), scalar(2, in_m)), vector(0.5, 1, 1.5, in_N)));
}

TEST_F(operators, do_not_define_products_and_quotients_of_vectors) {
    EXPECT_TRUE(fails(multiply(vector(1, 2, 3), vector(1, 2, 3)),
                      "ERROR:  Multiplying vectors -- not defined.\n", scalar(0)));
    const char* const dividing = "ERROR:  Dividing by a vector -- not defined.\n";
    EXPECT_TRUE(fails(divide(scalar(2), vector(1, 2, 3)), dividing, scalar(0)));
    EXPECT_TRUE(fails(divide(vector(1, 2, 3), vector(1, 2, 3)), dividing, scalar(0)));
}

TEST_F(operators, reject_a_vector_before_an_overflow) {
    EXPECT_TRUE(fails(multiply(vector(infinity_sentinel, 2, 3), vector(1, 2, 3)),
                      "ERROR:  Multiplying vectors -- not defined.\n", scalar(0)));
    EXPECT_TRUE(fails(divide(overflowed, vector(0, 2, 3)), "ERROR:  Dividing by a vector -- not defined.\n",
                      scalar(0)));
    EXPECT_TRUE(fails(power(vector(infinity_sentinel, 2, 3), scalar(2)),
                      "ERROR:  Exponentiating a vector -- not defined.\n", scalar(0)));
}

TEST_F(operators, report_overflowed_factors) {
    EXPECT_TRUE(fails(multiply(overflowed, scalar(2, in_m)), multiply_overflow, overflowed));
    EXPECT_TRUE(fails(multiply(vector(1, 2, 3), overflowed), multiply_overflow, overflowed));
    EXPECT_TRUE(fails(divide(overflowed, scalar(2, in_m)), divide_overflow, overflowed));
    EXPECT_TRUE(fails(divide(vector(1, 2, 3), overflowed), divide_overflow, overflowed));
}

TEST_F(operators, report_a_division_by_zero_as_overflow) {
    EXPECT_TRUE(fails(divide(scalar(1, in_m), scalar(0, in_s)), divide_overflow, overflowed));
    EXPECT_TRUE(fails(divide(scalar(1), scalar(-0.0)), divide_overflow, overflowed));
    EXPECT_TRUE(fails(divide(vector(1, 2, 3), scalar(0)), divide_overflow, overflowed));
}

TEST_F(operators, let_a_product_overflow_unnoticed_and_the_next_one_report_it) {
    const outcome product = multiply(scalar(1e308), scalar(10));
    EXPECT_TRUE(gives(product, overflowed));
    EXPECT_TRUE(fails(multiply(product.value, scalar(1)), multiply_overflow, overflowed));
    EXPECT_TRUE(gives(divide(scalar(1e308), scalar(0.1)), overflowed));
}

TEST_F(operators, normalize_products_and_quotients) {
    EXPECT_TRUE(gives(multiply(scalar(2, in_rad), scalar(3, in_m)), scalar(6, in_m)));
    EXPECT_TRUE(gives(divide(scalar(6, in_m), scalar(3, in_rad)), scalar(2, in_m)));
    EXPECT_TRUE(
        gives(multiply(scalar(2, in_degKdiff), scalar(3, in_m)), scalar(6, {0, 0, 0, 1, 1, 0, 0, 0})));
    EXPECT_TRUE(
        gives(divide(scalar(6, in_J), scalar(3, in_degKdiff)), scalar(2, {0, -2, 1, 2, -1, 0, 0, 0})));
}

TEST_F(operators, do_not_normalize_sums_and_powers) {
    const exponents difference_times_length = {0, 0, 0, 1, 0, 0, 1, 0};
    EXPECT_TRUE(gives(add(scalar(1, difference_times_length), scalar(2, difference_times_length)),
                      scalar(3, difference_times_length)));
    EXPECT_TRUE(
        gives(power(scalar(3, difference_times_length), scalar(2)), scalar(9, {0, 0, 0, 2, 0, 0, 2, 0})));
}

// Powers.

TEST_F(operators, raise_values_and_exponents) {
    EXPECT_TRUE(gives(power(scalar(3, in_m), scalar(2)), scalar(9, {0, 0, 0, 2, 0, 0, 0, 0})));
    EXPECT_TRUE(gives(power(scalar(4, in_m), scalar(0.5)), scalar(2, {0, 0, 0, 0.5, 0, 0, 0, 0})));
    EXPECT_TRUE(gives(power(scalar(3, in_m), scalar(0)), scalar(1)));
    EXPECT_TRUE(gives(power(scalar(0, in_m), scalar(2)), scalar(0, {0, 0, 0, 2, 0, 0, 0, 0})));
}

TEST_F(operators, raise_a_negative_base_to_a_whole_power_only) {
    EXPECT_TRUE(gives(power(scalar(-2), scalar(3)), scalar(-8)));
    EXPECT_TRUE(gives(power(scalar(-2), scalar(-2)), scalar(0.25)));
    EXPECT_TRUE(fails(power(scalar(-8), scalar(1.0 / 3.0)), power_overflow, overflowed));
}

TEST_F(operators, give_zero_for_zero_to_the_power_zero) {
    EXPECT_TRUE(gives(power(scalar(0), scalar(0)), scalar(0)));
    EXPECT_TRUE(gives(power(scalar(0, in_m), scalar(0)), scalar(0)));
    // Without a message, whatever units the exponent has.
    EXPECT_TRUE(gives(power(scalar(0), scalar(0, in_m)), scalar(0)));
}

TEST_F(operators, want_an_exponent_without_dimension) {
    EXPECT_TRUE(fails(power(scalar(2), scalar(1, in_m)), "ERROR: Dimensional exponent: 1 m.\n", scalar(0)));
    EXPECT_TRUE(fails(power(scalar(2), scalar(0.5, in_N)), "ERROR: Dimensional exponent: 0.5 kg m / s^2.\n",
                      scalar(0)));
    EXPECT_TRUE(gives(power(scalar(2), scalar(3, in_rad)), scalar(8)));
    EXPECT_TRUE(gives(power(scalar(2), scalar(3, in_mol)), scalar(8)));
}

TEST_F(operators, check_the_size_of_a_power_before_its_units) {
    EXPECT_TRUE(fails(power(scalar(-2), scalar(0.5, in_m)), power_overflow, overflowed));
    EXPECT_TRUE(fails(power(scalar(2), scalar(infinity_sentinel, in_m)), power_overflow, overflowed));
}

TEST_F(operators, report_an_overflowed_base_or_exponent) {
    EXPECT_TRUE(fails(power(overflowed, scalar(0)), power_overflow, overflowed));
    EXPECT_TRUE(fails(power(scalar(2), overflowed), power_overflow, overflowed));
}

TEST_F(operators, take_the_first_component_of_a_vector_as_exponent) {
    EXPECT_TRUE(gives(power(scalar(2), vector(1, 2, 3)), scalar(2)));
    EXPECT_TRUE(gives(power(scalar(2), vector(3, 0, 0)), scalar(8)));
}

TEST_F(operators, do_not_define_the_power_of_a_vector) {
    EXPECT_TRUE(fails(power(vector(1, 2, 3), scalar(2)), "ERROR:  Exponentiating a vector -- not defined.\n",
                      scalar(0)));
}

// Sign.

TEST_F(operators, negate_all_components_and_keep_kind_and_exponents) {
    EXPECT_TRUE(gives(negate(scalar(3, in_m)), scalar(-3, in_m)));
    EXPECT_TRUE(gives(negate(vector(1, -2, 3, in_N)), vector(-1, 2, -3, in_N)));
    EXPECT_TRUE(fails(negate(scalar(infinity_sentinel, in_m)), negate_overflow, overflowed));
}

} // namespace
