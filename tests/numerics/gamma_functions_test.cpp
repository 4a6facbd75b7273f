// Gamma, beta, error functions, the normal distribution, exponential integrals and Dawson's integral:
// particular values, failures, and the outputs after a failure.

#include "numerics/special/error_functions.h"
#include "numerics/special/exponential_integrals.h"
#include "numerics/special/gamma_functions.h"
#include "tests/numerics/evaluated.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using namespace metrify::test;

constexpr const char* gammln_text = "ERROR: x must be > 0 in in routine math_func_gammln().\n";
constexpr const char* gser_text = "ERROR: a too large, ITMAX too small routine math_func_gser().\n";
constexpr const char* gcf_text = "ERROR:  a too large, ITMAX too small in in routine math_func_gcf().\n";
constexpr const char* betacf_text =
    "ERROR:  a or b too big or MAXIT too small in routine math_func_betacf().\n";

void expect_result(const evaluated& f, double value, const std::string& err) {
    EXPECT_EQ(f.value, value) << err;
    EXPECT_EQ(f.err, err);
}

TEST(gamma_functions, gammln_refuses_numbers_up_to_0) {
    for (const double x : {0.0, -0.0, -1.0, -plus_infinity})
        expect_result(evaluate(math_func_gammln, x), 0.0, gammln_text);
    EXPECT_TRUE(std::isnan(evaluate(math_func_gammln, quiet_nan).value));
}

// The published steps in double precision, at arguments where the logarithms are not near the middle of two
// doubles. The last bit depends on the last digit of 1.00..., 2.5..., and the first, third and fourth term at
// the first argument, and on those of the second, fifth and sixth term at the others. A double has no digit
// for the last one of the second term: there it is two units.
TEST(gamma_functions, gammln_has_each_digit_of_its_coefficients) {
    EXPECT_EQ(evaluate(math_func_gammln, 3.248046875).value, 0.9338163071555161);
    EXPECT_EQ(evaluate(math_func_gammln, 1.1593902927638737).value, -0.07257434283958952);
    EXPECT_EQ(evaluate(math_func_gammln, 3.494739428424964).value, 1.1951749416044974);
    EXPECT_EQ(evaluate(math_func_gammln, 4.0740120883911).value, 1.885499369387321);
}

TEST(gamma_functions, incomplete_ones_test_x_before_a) {
    expect_result(evaluate(math_func_gammp, -1.0, -1.0), 0.0,
                  "ERROR: x must be >= 0.0 in in routine math_func_gammp().\n");
    expect_result(evaluate(math_func_gammp, 0.0, 1.0), 0.0,
                  "ERROR: a must be > 0.0 in in routine math_func_gammp().\n");
    expect_result(evaluate(math_func_gammq, -1.0, -1.0), 0.0,
                  "ERROR: x must be >= 0.0 in in routine math_func_gammq().\n");
    expect_result(evaluate(math_func_gammq, 0.0, 1.0), 0.0,
                  "ERROR: a must be > 0.0 in in routine math_func_gammq().\n");
}

TEST(gamma_functions, incomplete_ones_at_0_are_exact) {
    expect_result(evaluate(math_func_gammp, 2.5, 0.0), 0.0, "");
    expect_result(evaluate(math_func_gammq, 2.5, 0.0), 1.0, "");
}

TEST(gamma_functions, a_failed_series_leaves_0_of_which_the_complement_is_1) {
    expect_result(evaluate(math_func_gammp, 1e5, 1e5), 0.0, gser_text);
    expect_result(evaluate(math_func_gammq, 1e5, 1e5), 1.0, gser_text);
}

TEST(gamma_functions, a_failed_fraction_leaves_0_of_which_the_complement_is_1) {
    expect_result(evaluate(math_func_gammq, 1e5, 1.001e5), 0.0, gcf_text);
    expect_result(evaluate(math_func_gammp, 1e5, 1.001e5), 1.0, gcf_text);
}

struct value_and_log {
    double value = 7.0;
    double log_gamma = 7.0;
    std::string err;
};

value_and_log call(void (*routine)(double&, double, double, double&, text_str*&), double a, double x) {
    value_and_log out;
    work_text err;
    routine(out.value, a, x, out.log_gamma, err.str);
    out.err = err.view();
    return out;
}

TEST(gamma_functions, series_computes_the_logarithm_before_any_test) {
    const value_and_log at_0 = call(math_func_gser, 3.0, 0.0);
    EXPECT_EQ(at_0.value, 0.0);
    EXPECT_NEAR(at_0.log_gamma, std::log(2.0), 1e-9);
    const value_and_log below = call(math_func_gser, -1.0, -1.0);
    EXPECT_EQ(below.err,
              std::string(gammln_text) + "ERROR: x must be >= 0.0 in in routine math_func_gser().\n");
    EXPECT_EQ(below.value, 0.0);
    const value_and_log failed = call(math_func_gser, 1e5, 1e5);
    EXPECT_EQ(failed.value, 0.0);
    EXPECT_GT(failed.log_gamma, 1e6);
}

// The passes were counted with the routines of stated_gamma.py: 100 up to the first argument, 101 at the
// second.
TEST(gamma_functions, series_and_fractions_have_a_hundred_passes) {
    EXPECT_EQ(call(math_func_gser, 388.0, 388.0).err, "");
    EXPECT_EQ(call(math_func_gser, 397.0, 397.0).err, gser_text);
    EXPECT_EQ(call(math_func_gcf, 7030.0, 7031.0).err, "");
    EXPECT_EQ(call(math_func_gcf, 7040.0, 7041.0).err, gcf_text);
    EXPECT_EQ(evaluate(math_func_betacf, 30400.0, 30400.0, 0.5).err, "");
    EXPECT_EQ(evaluate(math_func_betacf, 30500.0, 30500.0, 0.5).err, betacf_text);
}

TEST(gamma_functions, a_failed_fraction_clears_the_logarithm_too) {
    const value_and_log failed = call(math_func_gcf, 1e5, 1.001e5);
    EXPECT_EQ(failed.value, 0.0);
    EXPECT_EQ(failed.log_gamma, 0.0);
    EXPECT_EQ(failed.err, gcf_text);
}

TEST(gamma_functions, beta_computes_on_with_the_zeros_of_failed_logarithms) {
    expect_result(evaluate(math_func_beta, -1.0, -1.0), 1.0,
                  std::string(gammln_text) + gammln_text + gammln_text);
    const evaluated one = evaluate(math_func_beta, -1.0, 3.0);
    EXPECT_EQ(one.err, gammln_text);
    EXPECT_NEAR(one.value, 2.0, 1e-9); // gamma(3) / gamma(2), and 1 for gamma(-1)
}

TEST(gamma_functions, incomplete_beta_is_exact_at_both_ends) {
    for (const double a : {0.5, 2.0, 30.0}) {
        expect_result(evaluate(math_func_betai, a, 3.0, 0.0), 0.0, "");
        expect_result(evaluate(math_func_betai, a, 3.0, 1.0), 1.0, "");
    }
}

TEST(gamma_functions, incomplete_beta_refuses_x_outside_0_to_1) {
    expect_result(evaluate(math_func_betai, 1.0, 1.0, -1e-300), 0.0,
                  "ERROR:  x must be >= 0 in routine math_func_betai().\n");
    expect_result(evaluate(math_func_betai, 1.0, 1.0, 1.0000001), 0.0,
                  "ERROR:  x must be <= 1 in routine math_func_betai().\n");
}

TEST(gamma_functions, incomplete_beta_with_a_failed_fraction_is_0_or_1) {
    expect_result(evaluate(math_func_betacf, 1e6, 1e6, 0.5), 0.0, betacf_text);
    expect_result(evaluate(math_func_betai, 1e6, 1.001e6, 0.4996), 0.0, betacf_text);
    expect_result(evaluate(math_func_betai, 1e6, 1e6, 0.5), 1.0, betacf_text);
    expect_result(evaluate(math_func_betacf, 1.0, 1.0, quiet_nan), 0.0, betacf_text);
}

TEST(error_functions, erf_of_0_is_0) {
    expect_result(evaluate(math_func_erf, 0.0), 0.0, "");
    expect_result(evaluate(math_func_erfc, 0.0), 1.0, "");
}

TEST(error_functions, erf_is_odd) {
    for (const double x : {1e-5, 0.3, 1.3, 4.0})
        EXPECT_EQ(evaluate(math_func_erf, -x).value, -evaluate(math_func_erf, x).value);
}

TEST(error_functions, erfc_below_0_is_1_and_erf) {
    for (const double x : {0.5, 1.0, 3.0})
        EXPECT_EQ(evaluate(math_func_erfc, -x).value, 1.0 + evaluate(math_func_erf, x).value);
    EXPECT_NEAR(evaluate(math_func_erfc, -1.0).value, 1.842700793, 3e-7);
}

TEST(error_functions, of_a_failed_fraction_are_formed_from_its_zero) {
    // The square overflows, and the fraction of an infinity doesn't converge.
    expect_result(evaluate(math_func_erf, 1e200), 1.0, gcf_text);
    expect_result(evaluate(math_func_erf, -1e200), -1.0, gcf_text);
    expect_result(evaluate(math_func_erfc, 1e200), 0.0, gcf_text);
    expect_result(evaluate(math_func_erfc, -1e200), 2.0, gcf_text);
    expect_result(evaluate(math_func_erf, quiet_nan), 1.0, gcf_text);
}

TEST(normal_distribution, has_exact_values_in_the_middle_and_from_6_on) {
    EXPECT_EQ(math_func_CumNormal(0.0), 0.5);
    for (const double x : {6.0, 7.0, 1e308, plus_infinity}) {
        EXPECT_EQ(math_func_CumNormal(x), 1.0);
        EXPECT_EQ(math_func_CumNormal(-x), 0.0);
    }
    EXPECT_LT(math_func_CumNormal(std::nextafter(6.0, 0.0)), 1.0);
    EXPECT_GT(math_func_CumNormal(std::nextafter(-6.0, 0.0)), 0.0);
}

TEST(normal_distribution, of_a_not_a_number_is_0) {
    EXPECT_EQ(math_func_CumNormal(quiet_nan), 0.0);
}

TEST(normal_distribution, of_both_signs_adds_up_to_1) {
    for (const double x : {0.5, 1.8, 1.87, 2.5, 5.0})
        EXPECT_NEAR(math_func_CumNormal(x) + math_func_CumNormal(-x), 1.0, 1e-15);
}

TEST(normal_inverse, is_finite_at_both_ends_and_differs_there) {
    EXPECT_NEAR(evaluate(math_func_CumNormalInv, 0.0).value, -8.2220821, 1e-7);
    EXPECT_NEAR(evaluate(math_func_CumNormalInv, 1.0).value, 8.2095361, 1e-7);
    EXPECT_EQ(evaluate(math_func_CumNormalInv, 1e-300).value, evaluate(math_func_CumNormalInv, 0.0).value);
    EXPECT_EQ(evaluate(math_func_CumNormalInv, 0.5).value, 0.0);
}

TEST(normal_inverse, refuses_a_number_outside_0_to_1) {
    expect_result(evaluate(math_func_CumNormalInv, -1e-300), 0.0,
                  "ERROR: n must be >= 0 in in routine math_func_CumNormalInv().\n");
    expect_result(evaluate(math_func_CumNormalInv, 1.0000001), 0.0,
                  "ERROR: n must be <= 1 in in routine math_func_CumNormalInv().\n");
    EXPECT_TRUE(std::isnan(evaluate(math_func_CumNormalInv, quiet_nan).value));
}

TEST(dawson, is_odd_and_never_fails) {
    for (const double x : {1e-300, 0.1, 0.2, 1.0, 30.0, 7e8, 9e8, 1e308})
        EXPECT_EQ(math_func_dawson(-x), -math_func_dawson(x));
    EXPECT_EQ(math_func_dawson(0.0), 0.0);
    EXPECT_EQ(math_func_dawson(plus_infinity), 0.0);
    EXPECT_TRUE(std::isnan(math_func_dawson(quiet_nan)));
}

TEST(exponential_integrals, expint_tests_n_then_x_then_both) {
    expect_result(evaluate(math_func_expint, -1, -1.0), 0.0,
                  "ERROR:  n must be >= 0 in routine math_func_expint().\n");
    expect_result(evaluate(math_func_expint, std::numeric_limits<std::int32_t>::min(), 1.0), 0.0,
                  "ERROR:  n must be >= 0 in routine math_func_expint().\n");
    expect_result(evaluate(math_func_expint, 0, -1.0), 0.0,
                  "ERROR:  x must be >= 0 in routine math_func_expint().\n");
    for (const std::int32_t n : {0, 1})
        expect_result(evaluate(math_func_expint, n, 0.0), 0.0,
                      "ERROR:  arg error routine math_func_expint().\n");
}

TEST(exponential_integrals, expint_has_closed_forms_for_order_0_and_at_0) {
    expect_result(evaluate(math_func_expint, 0, 2.0), std::exp(-2.0) / 2.0, "");
    expect_result(evaluate(math_func_expint, 2, 0.0), 1.0, "");
    expect_result(evaluate(math_func_expint, 5, 0.0), 0.25, "");
    expect_result(evaluate(math_func_expint, 2147483647, 0.0), 1.0 / 2147483646.0, "");
}

TEST(exponential_integrals, expint_of_a_not_a_number_is_a_series_that_fails) {
    expect_result(evaluate(math_func_expint, 2, quiet_nan), 0.0,
                  "ERROR:  series failed in routine math_func_expint().\n");
}

TEST(exponential_integrals, expint_of_infinity_is_a_fraction_that_fails) {
    for (const std::int32_t n : {1, 2})
        expect_result(evaluate(math_func_expint, n, plus_infinity), 0.0,
                      "ERROR:  continued fraction failed in routine math_func_expint().\n");
}

TEST(exponential_integrals, ei_refuses_numbers_up_to_0) {
    for (const double x : {0.0, -1.0})
        expect_result(evaluate(math_func_ei, x), 0.0, "ERROR:  x must be > 0 in routine math_func_ei().\n");
}

TEST(exponential_integrals, ei_of_a_tiny_number_is_a_logarithm) {
    for (const double x : {9e-31, 1e-300, 5e-324})
        expect_result(evaluate(math_func_ei, x), std::log(x) + 0.5772156649015329, "");
}

TEST(exponential_integrals, ei_beyond_the_largest_exponential_is_infinite_without_a_text) {
    expect_result(evaluate(math_func_ei, 1000.0), plus_infinity, "");
}

} // namespace
