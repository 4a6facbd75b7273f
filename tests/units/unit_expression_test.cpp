#include "tests/testing.h"
#include "units/unit_expression.h"
#include "units/user_units.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

constexpr double feet = 3.28083989501312;

/// The result of reading a text.
struct parsed {
    bool is_unit;
    double factor;
    double offset;
    exponents dim;
    std::size_t end; // position of the cursor
    std::string err;
};

parsed parse(const std::string& text, std::string_view err_before = "") {
    work_text err;
    err.append(err_before);
    cursor p(text.c_str());
    unit_scale scale;
    const bool is_unit = parse_unit_expression(p, scale, err.str);
    return {is_unit,
            scale.factor,
            scale.offset,
            scale.dim,
            static_cast<std::size_t>(p.at - text.c_str()),
            std::string(err.view())};
}

void expect_unit(const std::string& text, double factor, const exponents& dim, std::size_t end) {
    const parsed result = parse(text);
    EXPECT_TRUE(result.is_unit) << text;
    EXPECT_DOUBLE_EQ(result.factor, factor) << text;
    EXPECT_EQ(result.offset, 0.0) << text;
    EXPECT_EQ(result.dim, dim) << text;
    EXPECT_EQ(result.end, end) << text;
    EXPECT_EQ(result.err, "") << text;
}

void expect_unit(const std::string& text, double factor, const exponents& dim) {
    expect_unit(text, factor, dim, text.size());
}

void expect_no_unit(const std::string& text, const std::string& err = "") {
    const parsed result = parse(text);
    EXPECT_FALSE(result.is_unit) << text;
    EXPECT_EQ(result.end, 0u) << text;
    EXPECT_EQ(result.err, err) << text;
}

// Units were read up to `end`, followed by an error.
void expect_unit_and_error(const std::string& text, std::size_t end, const std::string& err) {
    const parsed result = parse(text);
    EXPECT_TRUE(result.is_unit) << text;
    EXPECT_EQ(result.end, end) << text;
    EXPECT_EQ(result.err, err) << text;
}

void expect_offset(const std::string& text, double offset) {
    EXPECT_TRUE(parse(text).is_unit) << text;
    EXPECT_EQ(parse(text).offset, offset) << text;
}

exponents length(double exponent) {
    return {0, 0, 0, exponent, 0, 0, 0, 0};
}

TEST(unit_expression, is_a_single_unit) {
    expect_unit("ft", feet, in_m);
    expect_unit("N", 1.0, in_N);
    expect_unit("rad", 1.0, in_rad);
    expect_unit("%", 100.0, in_plain);
}

TEST(unit_expression, is_the_empty_text_with_the_factor_1) {
    expect_unit("", 1.0, in_plain);
    EXPECT_EQ(parse("   ").factor, 1.0);
    EXPECT_TRUE(parse("   ").is_unit);
    EXPECT_TRUE(parse("; m").is_unit);
    EXPECT_EQ(parse("; m").end, 0u);
    EXPECT_TRUE(parse("# m").is_unit);
}

TEST(unit_expression, is_no_unknown_name) {
    expect_no_unit("xyz");
    expect_no_unit(" xyz m");
    expect_no_unit("Meter");
    expect_no_unit("2 m");
    expect_no_unit("^2");
    expect_no_unit(") m");
}

TEST(unit_expression, is_a_product_with_a_star_or_with_nothing_between) {
    expect_unit("ft lbf", feet * 0.224808943099711, in_J);
    expect_unit("ft*lbf", feet * 0.224808943099711, in_J);
    expect_unit("ft * lbf", feet * 0.224808943099711, in_J);
    expect_unit("ft ft ft", feet * feet * feet, length(3));
}

TEST(unit_expression, has_every_unit_after_a_slash_in_the_denominator) {
    for (const char* text : {"kg m / s^2", "kg*m/s/s", "kg m/s s", "kg m / s * s", "m kg / (s s)"})
        expect_unit(text, 1.0, in_N);
    const exponents per_kg = {0, -1, -1, 1, 0, 0, 0, 0};
    expect_unit("m / s * kg", 1.0, per_kg);
    expect_unit("m / (s) kg", 1.0, per_kg);
    expect_unit("m / s kg", 1.0, per_kg);
    expect_unit("km / hr ms", 0.001 / 0.000277777777778 / 1000.0, {0, -2, 0, 1, 0, 0, 0, 0});
}

TEST(unit_expression, ends_the_denominator_with_a_parenthesis) {
    expect_unit("(m / s) kg", 1.0, {0, -1, 1, 1, 0, 0, 0, 0});
    expect_unit("kg / (m / s) s", 1.0, {0, 0, 1, -1, 0, 0, 0, 0});
}

TEST(unit_expression, may_begin_with_a_slash) {
    expect_unit("/ s", 1.0, {0, -1, 0, 0, 0, 0, 0, 0});
    expect_unit("/ft", 1.0 / feet, length(-1));
    expect_unit("/ s m", 1.0, {0, -1, 0, -1, 0, 0, 0, 0});
}

TEST(unit_expression, may_begin_with_a_star) {
    expect_unit("*m", 1.0, in_m);
    expect_unit(" * ft", feet, in_m);
}

TEST(unit_expression, is_not_a_lone_slash) {
    expect_no_unit("/", "ERROR: Math expression incomplete.\n");
    expect_no_unit(" / ", "ERROR: Math expression incomplete.\n");
    expect_no_unit("/; m", "ERROR: Math expression incomplete.\n");
    expect_no_unit("/ # m", "ERROR: Math expression incomplete.\n");
    expect_no_unit("/\nm", "ERROR: Math expression incomplete.\n");
}

TEST(unit_expression, consumes_an_operator_before_the_statements_end) {
    expect_unit("m *", 1.0, in_m);
    expect_unit("m /", 1.0, in_m);
    expect_unit("*", 1.0, in_plain);
}

TEST(unit_expression, leaves_an_operator_before_a_text_that_is_not_a_unit) {
    expect_unit("m / 2", 1.0, in_m, 1);
    expect_unit("m * 2", 1.0, in_m, 1);
    expect_unit("m * x", 1.0, in_m, 1);
    expect_unit("ft /(2)", feet, in_m, 2);
    expect_unit("m + 2", 1.0, in_m, 1);
    expect_unit("m / kg", 1.0, {0, 0, -1, 1, 0, 0, 0, 0});
}

TEST(unit_expression, ends_before_a_text_that_is_not_a_unit) {
    expect_unit("m x", 1.0, in_m, 1);
    expect_unit("m 2", 1.0, in_m, 1);
    expect_unit("kg m ) s", 1.0, {0, 0, 1, 1, 0, 0, 0, 0}, 4);
    expect_unit("m, s", 1.0, in_m, 1);
    expect_unit("m / s xyz", 1.0, {0, -1, 0, 1, 0, 0, 0, 0}, 5);
}

TEST(unit_expression, ends_at_the_statements_end) {
    expect_unit("m;s", 1.0, in_m, 1);
    expect_unit("m\ns", 1.0, in_m, 1);
    EXPECT_EQ(parse("m # s").dim, in_m);
    EXPECT_EQ(parse("m ; s").dim, in_m);
}

TEST(unit_expression, stops_at_the_stop_pointer) {
    work_text err;
    const char* text = "kg m s";
    cursor p(text, text + 4);
    unit_scale scale;
    EXPECT_TRUE(parse_unit_expression(p, scale, err.str));
    EXPECT_EQ(scale.dim, (exponents{0, 0, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(p.at, text + 4);
}

TEST(unit_expression, follows_a_continuation) {
    expect_unit("kg \\ more\n m", 1.0, {0, 0, 1, 1, 0, 0, 0, 0});
}

TEST(unit_expression, clears_an_earlier_error) {
    EXPECT_EQ(parse("m", "ERROR: earlier").err, "");
    EXPECT_EQ(parse("xyz", "ERROR: earlier").err, "");
}

// Exponents.

TEST(unit_exponent, is_a_number) {
    expect_unit("m^2", 1.0, length(2));
    expect_unit("m^-2", 1.0, length(-2));
    expect_unit("m^+2", 1.0, length(2));
    expect_unit("m^2.5", 1.0, length(2.5));
    expect_unit("m^1e1", 1.0, length(10));
    expect_unit("m^.5", 1.0, length(0.5));
    expect_unit("m^0", 1.0, in_plain);
    expect_unit("ft^3", std::pow(feet, 3), length(3));
    expect_unit("ft^-2", std::pow(feet, -2), length(-2));
}

TEST(unit_exponent, may_have_blanks_around_its_caret) {
    expect_unit("m ^ 2", 1.0, length(2));
    expect_unit("m  ^2 s", 1.0, {0, 1, 0, 2, 0, 0, 0, 0});
    expect_unit("m \\\n ^ \\\n 2", 1.0, length(2));
}

TEST(unit_exponent, is_a_product_in_parentheses) {
    expect_unit("m^(2)", 1.0, length(2));
    expect_unit("m^(1/2)", 1.0, length(0.5));
    expect_unit("m^(-1/2)", 1.0, length(-0.5));
    expect_unit("m^(1/2/2)", 1.0, length(0.25));
    expect_unit("m^(2 3)", 1.0, length(6));
    expect_unit("m^(2*3)", 1.0, length(6));
    expect_unit("m^( 2 * 3 )", 1.0, length(6));
    expect_unit("m^(2 (3 4))", 1.0, length(24));
    expect_unit("m^((((2))))", 1.0, length(2));
    expect_unit("m^(/2)", 1.0, length(0.5));
}

TEST(unit_exponent, may_begin_with_a_star_or_a_slash) {
    expect_unit("m^*2", 1.0, length(2));
    expect_unit("m^/2", 1.0, length(0.5));
    expect_unit("m^//2", 1.0, length(2));
    expect_unit("m^**2", 1.0, length(2));
    expect_unit("m^/(2 2)", 1.0, length(0.25));
}

TEST(unit_exponent, goes_to_its_unit_alone) {
    expect_unit("kg m^2 / s^3", 1.0, {0, -3, 1, 2, 0, 0, 0, 0});
    expect_unit("m^2 ft^2", feet * feet, length(4));
    expect_unit("m / s^-2", 1.0, {0, 2, 0, 1, 0, 0, 0, 0});
}

TEST(unit_exponent, is_not_read_after_a_parenthesis) {
    expect_unit("(m/s)^2", 1.0, {0, -1, 0, 1, 0, 0, 0, 0}, 5);
    expect_unit("kg (m) ^2", 1.0, {0, 0, 1, 1, 0, 0, 0, 0}, 6);
}

TEST(unit_exponent, that_is_missing_is_a_bad_units_exponent) {
    expect_no_unit("m^", "ERROR: Bad units exponent.\n");
    expect_no_unit("m ^ ", "ERROR: Bad units exponent.\n");
    expect_no_unit("m^;", "ERROR: Bad units exponent.\n");
    expect_unit_and_error("kg m^", 2, "ERROR: Bad units exponent.\n");
}

TEST(unit_exponent, that_cannot_be_read_names_its_unit) {
    expect_no_unit("m^x", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^s", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^- 2", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("inches^)", "ERROR: Bad exponent for unit 'inches'.\n");
    expect_unit_and_error("kg / s^x", 2, "ERROR: Bad exponent for unit 's'.\n");
    expect_unit_and_error("kg s^x", 2, "ERROR: Bad exponent for unit 's'.\n");
}

TEST(unit_exponent, that_is_not_closed_is_bad) {
    expect_no_unit("m^(", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^(2", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^(1/2;", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^()", "ERROR: Bad exponent for unit 'm'.\n");
    expect_no_unit("m^(2 x)", "ERROR: Bad exponent for unit 'm'.\n");
}

TEST(unit_exponent, that_is_missing_after_a_star_or_a_slash_is_reported) {
    expect_no_unit("m^*", "ERROR: Bad exponent for unit 'm' following '*'.\n");
    expect_no_unit("m^/", "ERROR: Bad exponent for unit 'm' following '/'.\n");
}

TEST(unit_exponent, that_is_bad_after_a_star_or_a_slash_has_both_messages) {
    expect_no_unit("m^*x",
                   "ERROR: Bad exponent for unit 'm'.\nERROR: Bad exponent for unit 'm' following '*'.\n");
    expect_no_unit("m^/x",
                   "ERROR: Bad exponent for unit 'm'.\nERROR: Bad exponent for unit 'm' following '/'.\n");
    expect_no_unit("m^(1/x)",
                   "ERROR: Bad exponent for unit 'm'.\nERROR: Bad exponent for unit 'm' following '/'.\n");
}

TEST(unit_exponent, that_is_nested_too_deeply_has_one_message) {
    constexpr const char* too_deep =
        "ERROR: Cannot parse line -- parentheses and brackets are nested too deeply.\n";
    expect_no_unit("m^" + repeated("*/", 80) + "2", too_deep);
    expect_no_unit("m^" + repeated("(", 160) + "2" + repeated(")", 160), too_deep);
    expect_no_unit("m^" + repeated("(1/", 160) + "2" + repeated(")", 160), too_deep);
}

TEST(unit_exponent, is_not_divided_by_zero) {
    expect_no_unit("m^(1/0)", "ERROR: Divide by zero in exponent for unit 'm'.\n");
    expect_no_unit("m^/0", "ERROR: Divide by zero in exponent for unit 'm'.\n");
    expect_unit_and_error("ft m^(1/0)", 2, "ERROR: Divide by zero in exponent for unit 'm'.\n");
}

// Parentheses.

TEST(unit_parentheses, group_units) {
    expect_unit("(m)", 1.0, in_m);
    expect_unit("( kg ( m ) )", 1.0, {0, 0, 1, 1, 0, 0, 0, 0});
    expect_unit("m / (s s)", 1.0, {0, -2, 0, 1, 0, 0, 0, 0});
    expect_unit("m / (/s)", 1.0, {0, 1, 0, 1, 0, 0, 0, 0});
    expect_unit("ft (lbf)", feet * 0.224808943099711, in_J);
}

TEST(unit_parentheses, are_no_unit_when_empty) {
    expect_no_unit("()");
    expect_no_unit("( )");
    expect_no_unit("(())");
    expect_no_unit("(x)");
    expect_unit("m ()", 1.0, in_m, 1);
}

TEST(unit_parentheses, that_are_not_closed_leave_the_units_before_them) {
    expect_unit_and_error("m (s", 1, "ERROR:  Bad parenthesis.\n");
    EXPECT_EQ(parse("m (s").dim, in_m);
    expect_unit_and_error("m * (s", 1, "ERROR:  Bad parenthesis.\n");
    expect_unit_and_error("m / (s", 1, "ERROR:  Bad parenthesis.\n");
    expect_unit_and_error("m (s x)", 1, "ERROR:  Bad parenthesis.\n");
}

TEST(unit_parentheses, count_the_units_inside_them) {
    expect_unit_and_error("(s", 0, "ERROR:  Bad parenthesis.\n");
    expect_unit_and_error("(m (s)", 0, "ERROR:  Bad parenthesis.\n");
}

// Offsets.

TEST(unit_offset, is_that_of_a_single_temperature) {
    expect_offset("degC", -273.15);
    expect_offset("degF", -459.67);
    expect_offset(" degC ", -273.15);
    expect_offset("*degC", -273.15);
    expect_offset("degC;m", -273.15);
    EXPECT_EQ(parse("degF").factor, 1.8);
    EXPECT_EQ(parse("degF").dim, in_degK);
}

TEST(unit_offset, stays_with_parentheses_and_exponents) {
    expect_offset("(degC)", -273.15);
    expect_offset("((degF))", -459.67);
    expect_offset("degC^2", -273.15);
    expect_offset("degC^(1/2)", -273.15);
}

TEST(unit_offset, is_kept_before_text_left_to_the_expression) {
    expect_offset("degC / 2", -273.15);
    expect_offset("degF * 2", -459.67);
    expect_offset("degC x", -273.15);
}

TEST(unit_offset, goes_with_nothing_else) {
    for (const char* text : {"degC degC", "m degC", "degC m", "/degC", "/ degF", "degC/s", "J/degC",
                             "degF degC", "degC / degC", "(degC s)", "(degC) s", "degC /"})
        expect_offset(text, 0.0);
}

TEST(unit_offset, goes_with_no_other_temperature) {
    for (const char* text : {"degK", "degR", "degKdiff", "degCdiff", "degFdiff", "degRdiff"})
        expect_offset(text, 0.0);
}

// Range.

TEST(unit_factor, that_overflows_is_an_error) {
    expect_unit_and_error("nm^5", 0, "ERROR:  Numerical over or underflow.\n");
    expect_unit_and_error("eV^3", 0, "ERROR:  Numerical over or underflow.\n");
    expect_unit_and_error("eV eV cm", 5, "ERROR:  Numerical over or underflow.\n");
    expect_unit_and_error("eV * eV * cm", 7, "ERROR:  Numerical over or underflow.\n");
    expect_unit_and_error("eV / Gpsi^2 ", 2, "ERROR:  Numerical over or underflow.\n");
}

TEST(unit_factor, may_be_large_below_1e39) {
    EXPECT_EQ(parse("eV^2").err, "");
    EXPECT_DOUBLE_EQ(parse("eV^2").factor, 6.241506479963234e+18 * 6.241506479963234e+18);
    EXPECT_EQ(parse("nm^4").err, "");
}

TEST(unit_factor, of_zero_is_no_divisor) {
    expect_unit_and_error("m / GPa^40", 1, "ERROR:  Numerical over or underflow.\n");
    EXPECT_EQ(parse("GPa^40").factor, 0.0);
    EXPECT_EQ(parse("GPa^40").err, "");
}

// User units.

TEST(unit_expression, reads_user_units) {
    work_text err;
    free_user_units();
    store_user_unit("foo", scalar(2, in_N), err.str);
    expect_unit("foo", 0.5, in_N);
    expect_unit("foo^2 / m", 0.25, {0, -4, 2, 1, 0, 0, 0, 0});
    free_user_units();
    expect_no_unit("foo");
}

TEST(unit_expression, has_any_length) {
    const parsed result = parse(repeated("m ", 100000));
    EXPECT_TRUE(result.is_unit);
    EXPECT_EQ(result.dim, length(100000));
    EXPECT_EQ(result.end, 200000u);
    EXPECT_EQ(result.err, "");
}

TEST(unit_expression, may_be_nested) {
    const parsed result = parse(repeated("(", 50) + "ft" + repeated(")", 50));
    EXPECT_TRUE(result.is_unit);
    EXPECT_EQ(result.factor, feet);
    EXPECT_EQ(result.end, 102u);
    EXPECT_EQ(result.err, "");
}

} // namespace
