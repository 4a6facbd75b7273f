// The mathematical functions of one and two scalars.

#include "tests/functions/calling.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using namespace metrify;
using namespace metrify::test;

// Functions of one dimensionless scalar that give a new number.
constexpr const char* formula_names[] = {
    "sin",   "cos",   "tan",   "sec",   "csc",  "cot",  "asin", "acos",  "atan",  "asec",
    "acsc",  "acot",  "sinh",  "cosh",  "tanh", "sech", "csch", "coth",  "asinh", "acosh",
    "atanh", "asech", "acsch", "acoth", "exp",  "ln",   "log",  "log10",
};
constexpr const char* rounding_names[] = {"ceil", "floor", "int", "round"};
constexpr const char* names_of_any_units[] = {"abs", "sign", "sqrt"};

std::string message_about(const std::string& name, const std::string& ending) {
    return "ERROR:  Computing " + name + "() " + ending + ".\n";
}

// comp[0] may be a not-a-number.
void expect_scalar(const outcome& result, double x, const exponents& dim, const char* name) {
    EXPECT_EQ(result.err, "") << name;
    EXPECT_EQ(result.value.kind, 0) << name;
    EXPECT_EQ(result.value.dim, dim) << name;
    const double value = result.value.comp[0];
    EXPECT_TRUE(std::isnan(x) ? std::isnan(value) : value == x) << name << ": " << value << ", not " << x;
}

TEST(scalar_functions, refuse_a_vector) {
    const std::vector<dim_value> given = {vector(0.5, 0, 0)};
    for (const char* name : formula_names)
        expect_refused(call(name, given), message_about(name, "of a vector"));
    for (const char* name : rounding_names)
        expect_refused(call(name, given), message_about(name, "of a vector"));
    for (const char* name : names_of_any_units)
        expect_refused(call(name, given), message_about(name, "of a vector"));
    EXPECT_EQ(answer("sin([1, 2, 3])"), "ERROR:  Computing sin() of a vector.");
}

TEST(scalar_functions, refuse_a_dimensional_number_unless_they_keep_units) {
    for (std::size_t i = 0; i < 8; ++i) {
        if (i == dim_angle || i == dim_amount)
            continue;
        exponents dim = {};
        dim[i] = 1.0;
        for (const char* name : formula_names)
            expect_refused(call(name, {scalar(0.5, dim)}), message_about(name, "of a dimensional number"));
        for (const char* name : rounding_names)
            expect_refused(call(name, {scalar(0.5, dim)}), message_about(name, "of a dimensional number"));
    }
    EXPECT_EQ(answer("sin(1 m)"), "ERROR:  Computing sin() of a dimensional number.");
    EXPECT_EQ(answer("sin(1 deg m)"), "ERROR:  Computing sin() of a dimensional number.");
}

TEST(scalar_functions, test_for_a_vector_before_the_units) {
    for (const char* name : formula_names)
        expect_refused(call(name, {vector(1, 2, 3, meter)}), message_about(name, "of a vector"));
}

TEST(scalar_functions, test_the_units_before_the_range) {
    for (const char* name : {"acosh", "asech", "acoth"})
        expect_refused(call(name, {scalar(-0.5, meter)}), message_about(name, "of a dimensional number"));
    expect_refused(call("atanh", {scalar(2, meter)}), message_about("atanh", "of a dimensional number"));
}

TEST(scalar_functions, accept_angle_and_amount_of_substance_and_drop_them) {
    constexpr expectation lines[] = {
        {"sin(90 deg)", "= 1"},
        {"sin(30 deg)", "= 0.5"},
        {"sin(2 mol)", "= 0.909297"},
        {"exp(0.5 rad)", "= 1.64872"},
    };
    expect_answers(lines);
    expect_scalar(call("sin", {scalar(0.0, {1, 0, 0, 0, 0, 3})}), 0.0, {}, "sin");
}

// Near a zero the remaining digits depend on the platform's library.
TEST(scalar_functions, of_whole_and_quarter_turns_are_near_their_limits) {
    const outcome whole = call("sin", {scalar(2.0 * std::numbers::pi, radian)});
    EXPECT_NEAR(whole.value.comp[0], 0.0, 1e-15);
    EXPECT_EQ(whole.value.dim, exponents{});
    EXPECT_GT(call("sec", {scalar(std::numbers::pi / 2.0, radian)}).value.comp[0], 1e16);
}

TEST(scalar_functions, give_a_plain_zero_for_the_sentinel) {
    for (const char* name : formula_names) {
        if (name == std::string_view("atanh") || name == std::string_view("asech"))
            continue; // these test their range first
        const outcome result = call(name, {scalar(infinity_sentinel, radian)});
        EXPECT_TRUE(is_cleared(result.value)) << name;
        EXPECT_EQ(result.err, "") << name;
    }
}

TEST(scalar_functions, of_trigonometry) {
    constexpr expectation lines[] = {
        {"sin(0.5)", "= 0.479426"},  {"sin(-0.5)", "= -0.479426"}, {"cos(0.5)", "= 0.877583"},
        {"cos(-0.5)", "= 0.877583"}, {"tan(0.5)", "= 0.546302"},   {"tan(-0.5)", "= -0.546302"},
        {"sec(0.5)", "= 1.13949"},   {"sec(-0.5)", "= 1.13949"},   {"csc(0.5)", "= 2.08583"},
        {"csc(-0.5)", "= -2.08583"}, {"cot(0.5)", "= 1.83049"},    {"cot(-0.5)", "= -1.83049"},
    };
    expect_answers(lines);
}

TEST(scalar_functions, of_hyperbolas_and_the_exponential) {
    constexpr expectation lines[] = {
        {"sinh(0.5)", "= 0.521095"},  {"sinh(-0.5)", "= -0.521095"},
        {"cosh(0.5)", "= 1.12763"},   {"cosh(-0.5)", "= 1.12763"},
        {"tanh(0.5)", "= 0.462117"},  {"tanh(-0.5)", "= -0.462117"},
        {"sech(0.5)", "= 0.886819"},  {"csch(0.5)", "= 1.91903"},
        {"csch(-0.5)", "= -1.91903"}, {"coth(0.5)", "= 2.16395"},
        {"coth(-0.5)", "= -2.16395"}, {"exp(0.5)", "= 1.64872"},
        {"exp(-0.5)", "= 0.606531"},  {"exp(0)", "= 1"},
    };
    expect_answers(lines);
}

TEST(scalar_functions, give_the_sentinel_where_a_divisor_is_exactly_zero) {
    for (const char* name : {"csc", "cot", "csch", "coth"}) {
        expect_scalar(call(name, {scalar(0.0)}), infinity_sentinel, {}, name);
        expect_scalar(call(name, {scalar(-0.0)}), infinity_sentinel, {}, name);
    }
    EXPECT_EQ(answer("csc(0)"), "= inf");
    EXPECT_EQ(answer("csc(0) + 1"), "ERROR:  Numerical over or underflow while adding.");
}

TEST(scalar_functions, an_infinite_divisor_gives_zero) {
    for (const char* name : {"sech", "csch"})
        expect_scalar(call(name, {scalar(1000.0)}), 0.0, {}, name);
}

TEST(scalar_functions, overflow_of_exp_is_noticed_where_it_is_used) {
    EXPECT_EQ(answer("exp(1000)"), "= inf");
    EXPECT_EQ(answer("exp(1000) * 2"), "ERROR: Numerical over or underflow while multiplying.");
}

TEST(scalar_functions, of_inverse_trigonometry_give_radians) {
    constexpr expectation lines[] = {
        {"asin(0.5)", "= 0.523599 rad"}, {"asin(-0.5)", "= -0.523599 rad"}, {"asin(-1)", "= -1.5708 rad"},
        {"acos(0.5)", "= 1.0472 rad"},   {"acos(-0.5)", "= 2.0944 rad"},    {"acos(-1)", "= 3.14159 rad"},
        {"atan(0.5)", "= 0.463648 rad"}, {"atan(-0.5)", "= -0.463648 rad"}, {"asin(0.5) ; deg", "= 30 deg"},
        {"asec(2)", "= 1.0472 rad"},     {"acsc(2)", "= 0.523599 rad"},     {"acsc(1)", "= 1.5708 rad"},
        {"acot(2)", "= 0.463648 rad"},   {"acot(-2)", "= -0.463648 rad"},   {"acot(0)", "= 1.5708 rad"},
    };
    expect_answers(lines);
    for (const char* name : {"asin", "acos", "atan", "asec", "acsc", "acot"})
        EXPECT_EQ(call(name, {scalar(1.0)}).value.dim, radian) << name;
}

TEST(scalar_functions, acot_of_a_negative_zero_is_that_of_zero) {
    expect_scalar(call("acot", {scalar(-0.0)}), std::numbers::pi / 2.0, radian, "acot");
}

TEST(scalar_functions, asec_of_a_negative_number_lies_in_the_second_quadrant) {
    EXPECT_EQ(answer("asec(-2)"), "= 2.0944 rad");
    EXPECT_EQ(answer("asec(-1)"), "= 3.14159 rad");
}

TEST(scalar_functions, acsc_of_a_negative_number_is_the_negative_of_its_formula) {
    EXPECT_EQ(answer("acsc(-2)"), "= -2.61799 rad"); // -5 pi / 6
    EXPECT_EQ(answer("acsc(-1)"), "= -1.5708 rad");
}

TEST(scalar_functions, of_inverse_trigonometry_give_the_sentinel_in_radians_out_of_range) {
    for (const char* name : {"asin", "acos"})
        for (const double x : {2.0, -2.0, 1.0000001, -infinity_sentinel})
            expect_scalar(call(name, {scalar(x)}), infinity_sentinel, radian, name);
    for (const char* name : {"asec", "acsc"})
        for (const double x : {0.0, 0.5, -0.5, 0.9999999})
            expect_scalar(call(name, {scalar(x)}), infinity_sentinel, radian, name);
    EXPECT_EQ(answer("asin(2)"), "= inf rad");
    EXPECT_EQ(answer("asin(2) + 1 rad"), "ERROR:  Numerical over or underflow while adding.");
}

TEST(scalar_functions, of_inverse_hyperbolas) {
    constexpr expectation lines[] = {
        {"asinh(0.5)", "= 0.481212"}, {"asinh(-0.5)", "= -0.481212"},
        {"acosh(2)", "= 1.31696"},    {"acosh(1)", "= 0"},
        {"atanh(0.5)", "= 0.549306"}, {"atanh(-0.5)", "= -0.549306"},
        {"asech(0.5)", "= 1.31696"},  {"asech(1)", "= 0"},
        {"acsch(2)", "= 0.481212"},   {"acsch(-2)", "= -0.481212"},
        {"acoth(2)", "= 0.549306"},   {"acoth(-2)", "= -0.549306"},
    };
    expect_answers(lines);
}

TEST(scalar_functions, acosh_refuses_arguments_below_one) {
    constexpr const char* message = "ERROR:  Arg to acosh() must be greater than one.\n";
    for (const double x : {0.5, 0.9999999, 0.0, -3.0, -infinity_sentinel})
        expect_refused(call("acosh", {scalar(x)}), message);
    EXPECT_EQ(answer("acosh(0.5)"), "ERROR:  Arg to acosh() must be greater than one.");
}

TEST(scalar_functions, atanh_refuses_arguments_above_one_and_the_sentinel) {
    constexpr const char* message = "ERROR:  Arg of atanh() must be less than one.\n";
    for (const double x : {1.5, 1.0000001, infinity_sentinel})
        expect_refused(call("atanh", {scalar(x)}), message);
}

TEST(scalar_functions, atanh_has_no_lower_bound) {
    expect_scalar(call("atanh", {scalar(-1.5)}), not_a_number, {}, "atanh");
    expect_scalar(call("atanh", {scalar(-1.0)}), -infinity_sentinel, {}, "atanh");
    EXPECT_EQ(answer("atanh(-1.5)"), "= nan");
}

TEST(scalar_functions, atanh_of_one_divides_by_zero) {
    expect_scalar(call("atanh", {scalar(1.0)}), infinity_sentinel, {}, "atanh");
}

TEST(scalar_functions, asech_refuses_arguments_outside_zero_and_one_and_the_sentinel) {
    constexpr const char* message = "ERROR:  ARg to asech() must be between zero and one.\n";
    for (const double x : {-0.5, 1.5, infinity_sentinel, -infinity_sentinel})
        expect_refused(call("asech", {scalar(x)}), message);
}

TEST(scalar_functions, asech_and_acsch_of_zero_pass_an_infinity_through_the_formula) {
    expect_scalar(call("asech", {scalar(0.0)}), infinity_sentinel, {}, "asech");
    expect_scalar(call("acsch", {scalar(0.0)}), infinity_sentinel, {}, "acsch");
}

TEST(scalar_functions, acoth_refuses_arguments_inside_one) {
    constexpr const char* message = "ERROR:  Arg of acoth() must be greater than one.\n";
    for (const double x : {0.5, -0.5, 0.0})
        expect_refused(call("acoth", {scalar(x)}), message);
    expect_scalar(call("acoth", {scalar(1.0)}), infinity_sentinel, {}, "acoth");
    expect_scalar(call("acoth", {scalar(-1.0)}), -infinity_sentinel, {}, "acoth");
}

TEST(scalar_functions, of_logarithms) {
    constexpr expectation lines[] = {
        {"ln(10)", "= 2.30259"}, {"ln(1)", "= 0"},          {"log(100)", "= 4.60517"}, // natural as well
        {"log10(100)", "= 2"},   {"log10(2)", "= 0.30103"}, {"ln(0)", "= inf"},        {"ln(-1)", "= inf"},
    };
    expect_answers(lines);
}

TEST(scalar_functions, of_logarithms_give_the_sentinel_for_numbers_up_to_zero) {
    for (const char* name : {"ln", "log", "log10"})
        for (const double x : {0.0, -0.0, -1.0, -infinity_sentinel, not_a_number})
            expect_scalar(call(name, {scalar(x)}), infinity_sentinel, {}, name);
}

TEST(scalar_functions, of_a_not_a_number) {
    for (const char* name : {"sin", "cos", "tan", "sec", "csc", "cot", "sinh", "cosh", "tanh", "sech", "csch",
                             "coth", "asinh", "acosh", "atanh", "asech", "acsch", "acoth", "exp"})
        expect_scalar(call(name, {scalar(not_a_number)}), not_a_number, {}, name);
    for (const char* name : {"asin", "acos", "atan", "acot"})
        expect_scalar(call(name, {scalar(not_a_number)}), not_a_number, radian, name);
    for (const char* name : {"asec", "acsc"})
        expect_scalar(call(name, {scalar(not_a_number)}), infinity_sentinel, radian, name);
    for (const char* name : {"ceil", "floor", "int", "abs"})
        expect_scalar(call(name, {scalar(not_a_number)}), not_a_number, {}, name);
    expect_scalar(call("sign", {scalar(not_a_number)}), 0.0, {}, "sign");
    expect_scalar(call("round", {scalar(not_a_number)}), -2147483648.0, {}, "round");
}

TEST(rounding, of_halves_and_negative_numbers) {
    constexpr expectation lines[] = {
        {"int(-2.5)", "= -2"},  {"int(2.5)", "= 2"},     {"floor(-2.5)", "= -3"}, {"floor(2.5)", "= 2"},
        {"ceil(-2.5)", "= -2"}, {"ceil(2.5)", "= 3"},    {"round(-2.5)", "= -3"}, {"round(2.5)", "= 3"},
        {"round(2.4)", "= 2"},  {"round(-2.4)", "= -2"}, {"round(0)", "= 0"},     {"int(7)", "= 7"},
    };
    expect_answers(lines);
}

TEST(rounding, passes_through_32_bits_in_round) {
    const struct {
        double x, rounded;
    } rows[] = {
        {3e9, -2147483648.0},          {-3e9, -2147483648.0},
        {1e300, -2147483648.0},        {-infinity_sentinel, -2147483648.0},
        {2147483647.0, 2147483647.0},  {2147483647.25, 2147483647.0},
        {2147483647.5, -2147483648.0}, {-2147483648.25, -2147483648.0},
    };
    for (const auto& row : rows)
        expect_scalar(call("round", {scalar(row.x)}), row.rounded, {}, "round");
    EXPECT_EQ(answer("round(3e9)"), "= -2.14748e+09");
    EXPECT_FALSE(std::signbit(call("round", {scalar(-0.25)}).value.comp[0])); // an integer has one zero
}

TEST(rounding, of_large_numbers_keeps_them_in_the_other_functions) {
    for (const char* name : {"ceil", "floor", "int"})
        expect_scalar(call(name, {scalar(-3e300)}), -3e300, {}, name);
}

TEST(rounding, keeps_angle_and_amount_of_substance) {
    constexpr exponents soft = {1, 0, 0, 0, 0, 2};
    for (const char* name : rounding_names)
        expect_scalar(call(name, {scalar(4.0, soft)}), 4.0, soft, name);
    EXPECT_EQ(answer("floor(2.5 rad)"), "= 2 rad");
}

TEST(rounding, keeps_the_sentinel_and_its_units) {
    for (const char* name : rounding_names)
        expect_scalar(call(name, {scalar(infinity_sentinel, radian)}), infinity_sentinel, radian, name);
}

TEST(functions_of_any_units, abs_keeps_the_units) {
    EXPECT_EQ(answer("abs(5 m)"), "= 5 m");
    EXPECT_EQ(answer("abs(-3 m)"), "= 3 m");
    expect_scalar(call("abs", {scalar(-infinity_sentinel, second)}), infinity_sentinel, second, "abs");
    expect_scalar(call("abs", {scalar(infinity_sentinel, second)}), infinity_sentinel, second, "abs");
    EXPECT_FALSE(std::signbit(call("abs", {scalar(-0.0)}).value.comp[0]));
}

TEST(functions_of_any_units, sign_is_a_plain_number) {
    EXPECT_EQ(answer("sign(5 m)"), "= 1");
    expect_scalar(call("sign", {scalar(-5.0, meter)}), -1.0, {}, "sign");
    expect_scalar(call("sign", {scalar(0.0, meter)}), 0.0, {}, "sign");
    expect_scalar(call("sign", {scalar(infinity_sentinel, meter)}), 0.0, {}, "sign");
    expect_scalar(call("sign", {scalar(-infinity_sentinel)}), -1.0, {}, "sign");
}

TEST(functions_of_any_units, sqrt_halves_the_exponents) {
    EXPECT_EQ(answer("sqrt(4 m^2)"), "= 2 m");
    EXPECT_EQ(answer("sqrt(2 m)"), "= 1.41421 m^0.5");
    expect_scalar(call("sqrt", {scalar(9.0, {1, -3, 4, 1, 0, 0, 0, 2})}), 3.0,
                  {0.5, -1.5, 2, 0.5, 0, 0, 0, 1}, "sqrt");
    expect_scalar(call("sqrt", {scalar(0.0, meter)}), 0.0, {0, 0, 0, 0.5}, "sqrt");
}

TEST(functions_of_any_units, sqrt_of_the_sentinel_is_a_plain_zero) {
    expect_scalar(call("sqrt", {scalar(infinity_sentinel, meter)}), 0.0, {}, "sqrt");
}

TEST(functions_of_any_units, sqrt_refuses_negative_numbers_and_nans_and_gives_the_sentinel) {
    for (const double x : {-4.0, -infinity_sentinel, not_a_number}) {
        const outcome result = call("sqrt", {scalar(x, meter)});
        EXPECT_EQ(result.err, "ERROR:  sqrt() of a negative value.\n");
        EXPECT_TRUE(equal(result.value, scalar(infinity_sentinel)));
    }
    EXPECT_EQ(answer("sqrt(-4)"), "ERROR:  sqrt() of a negative value.");
}

TEST(two_arguments, atan2_gives_the_angle_of_like_quantities) {
    constexpr expectation lines[] = {
        {"atan2(1, 2)", "= 0.463648 rad"},     {"atan2(-1, -2)", "= -2.67795 rad"},
        {"atan2(1 m, 2 m)", "= 0.463648 rad"}, {"atan2(1 m, 0)", "= 1.5708 rad"},
        {"atan2(0, -1 m)", "= 3.14159 rad"},   {"atan2(1 ft, 12 inch)", "= 0.785398 rad"},
    };
    expect_answers(lines);
    expect_scalar(call("atan2", {scalar(0.0, meter), scalar(1.0, meter)}), 0.0, radian, "atan2");
}

TEST(two_arguments, atan2_has_no_test_for_the_sentinel) {
    expect_scalar(call("atan2", {scalar(1.0), scalar(infinity_sentinel)}), 0.0, radian, "atan2");
    EXPECT_NEAR(call("atan2", {scalar(infinity_sentinel), scalar(1.0)}).value.comp[0], std::numbers::pi / 2.0,
                1e-15);
}

TEST(two_arguments, atan2_refuses_vectors_and_unlike_quantities) {
    for (const auto& given :
         {std::vector{vector(1, 0, 0), scalar(1)}, std::vector{scalar(1), vector(1, 0, 0)}})
        expect_refused(call("atan2", given), "ERROR:  Computing atan2() of a vector.\n");
    expect_refused(call("atan2", {scalar(1, meter), scalar(1, second)}),
                   "ERROR:  Computing atan2() of a dimensional number.\n");
    EXPECT_EQ(answer("atan2(1 m, 1)"), "ERROR:  Computing atan2() of a dimensional number.");
}

TEST(two_arguments, mod_has_the_units_and_the_sign_of_the_first) {
    constexpr expectation lines[] = {
        {"mod(7 m, 2 m)", "= 1 m"}, {"mod(-7, 2)", "= -1"},   {"mod(7, -2)", "= 1"},
        {"mod(7.5, 2)", "= 1.5"},   {"mod(0, 2 m)", "= 0 m"}, {"mod(7 m, 0)", "= nan m"},
    };
    expect_answers(lines);
    expect_scalar(call("mod", {scalar(7.0, radian), scalar(4.0)}), 3.0, radian, "mod");
}

TEST(two_arguments, mod_keeps_the_sentinel_of_the_first_only) {
    expect_scalar(call("mod", {scalar(infinity_sentinel, meter), scalar(2.0, meter)}), infinity_sentinel,
                  meter, "mod");
    expect_scalar(call("mod", {scalar(5.0), scalar(infinity_sentinel)}), 5.0, {}, "mod");
}

TEST(two_arguments, mod_refuses_vectors_and_unlike_quantities) {
    for (const auto& given :
         {std::vector{vector(1, 0, 0), scalar(1)}, std::vector{scalar(1), vector(1, 0, 0)}})
        expect_refused(call("mod", given), "ERROR:  Computing mod() of a vector.\n");
    expect_refused(call("mod", {scalar(7, meter), scalar(2, second)}),
                   "ERROR:  Computing mod() with args of diff dimensions.\n");
    EXPECT_EQ(answer("mod(7 m, 2 s)"), "ERROR:  Computing mod() with args of diff dimensions.");
}

} // namespace
