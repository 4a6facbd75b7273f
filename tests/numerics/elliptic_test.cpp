// Carlson's forms with their required differences, Legendre's integrals and the Jacobian functions:
// particular values, the order of the tests, failures, and the outputs after a failure.

#include "numerics/special/carlson.h"
#include "numerics/special/elliptic.h"
#include "numerics/special/jacobi.h"
#include "tests/numerics/evaluated.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>

namespace {

using namespace metrify;
using namespace metrify::test;

void expect_refused(const evaluated& f, const char* text) {
    EXPECT_EQ(f.value, 0.0) << text;
    EXPECT_EQ(f.err, text);
}

TEST(carlson_rc, of_equal_arguments_is_exactly_12_over_the_root) {
    for (const double x : {0.25, 1.0, 4.0, 1024.0 * 1024.0}) {
        const evaluated rc = evaluate(math_func_carlsons_rc, x, x);
        EXPECT_EQ(rc.value, 12.0 / std::sqrt(x));
        EXPECT_EQ(rc.err, "");
    }
}

TEST(carlson_rc, of_a_negative_y_is_no_number_and_leaves_no_text) {
    for (const double x : {0.0, 1.0, 100.0}) {
        const evaluated rc = evaluate(math_func_carlsons_rc, x, -1.0);
        EXPECT_TRUE(std::isnan(rc.value));
        EXPECT_EQ(rc.err, "");
    }
}

TEST(carlson_rc, tests_in_its_order) {
    const auto rc = [](double x, double y) { return evaluate(math_func_carlsons_rc, x, y); };
    expect_refused(rc(-1.0, 0.0), "ERROR:  x must be >= 0 in routine math_func_carlsons_rc().\n");
    expect_refused(rc(0.0, 0.0), "ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n");
    expect_refused(rc(1e-39, -1e-39), "ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n");
    expect_refused(rc(0.01, -4e37), "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n");
    expect_refused(rc(0.01, -2e19), "ERROR:  bad arg range in routine math_func_carlsons_rc().\n");
}

TEST(carlson_rc, its_limits_are_not_refused_themselves) {
    EXPECT_EQ(evaluate(math_func_carlsons_rc, 0.0, 1.69e-38).err, "");
    EXPECT_EQ(evaluate(math_func_carlsons_rc, 0.0, 3e37).err, "");
    EXPECT_EQ(evaluate(math_func_carlsons_rc, 0.01, -1.72e19).err, "");
    EXPECT_EQ(evaluate(math_func_carlsons_rc, 0.0, -2e19).err, "");
    EXPECT_EQ(evaluate(math_func_carlsons_rc, 0.010281960000000001, -2e19).err, "");
    EXPECT_NE(evaluate(math_func_carlsons_rc, std::nextafter(0.010281960000000001, 0.0), -2e19).err, "");
}

TEST(carlson_rc, of_a_not_a_number_is_none) {
    EXPECT_TRUE(std::isnan(evaluate(math_func_carlsons_rc, quiet_nan, 1.0).value));
    EXPECT_TRUE(std::isnan(evaluate(math_func_carlsons_rc, 1.0, quiet_nan).value));
}

TEST(carlson_rd_rf, of_equal_arguments_are_exact) {
    EXPECT_EQ(evaluate(math_func_carlsons_rf, 1.0, 1.0, 1.0).value, 1.0);
    EXPECT_EQ(evaluate(math_func_carlsons_rd, 1.0, 1.0, 1.0).value, 1.0);
}

TEST(carlson_rd, tests_in_its_order) {
    const auto rd = [](double x, double y, double z) { return evaluate(math_func_carlsons_rd, x, y, z); };
    expect_refused(rd(-1.0, 1.0, 0.0), "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n");
    expect_refused(rd(0.0, 0.0, 5e21), "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n");
    expect_refused(rd(5e21, 1.0, -1.0), "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n");
    for (const auto& [x, y, z] : {std::array{5e21, 1.0, 1.0}, {1.0, 5e21, 1.0}, {1.0, 1.0, 5e21}})
        expect_refused(rd(x, y, z), "ERROR:  x, y, z too big in routine math_func_carlsons_rd().\n");
    EXPECT_EQ(rd(0.0, 1e-25, 4.5e21).err, "");
}

TEST(carlson_rf, tests_in_its_order) {
    const auto rf = [](double x, double y, double z) { return evaluate(math_func_carlsons_rf, x, y, z); };
    for (const auto& [x, y, z] : {std::array{-1.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, {0.0, 4e37, -1.0}})
        expect_refused(rf(x, y, z), "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n");
    for (const auto& [x, y, z] : {std::array{0.0, 0.0, 4e37}, {0.0, 4e37, 0.0}, {4e37, 0.0, 0.0}})
        expect_refused(rf(x, y, z), "ERROR:  x or y or z too small in routine math_func_carlsons_rf().\n");
    for (const auto& [x, y, z] : {std::array{1.0, 1.0, 4e37}, {1.0, 4e37, 1.0}, {4e37, 1.0, 1.0}})
        expect_refused(rf(x, y, z), "ERROR:  x or y or z too big in routine math_func_carlsons_rf().\n");
    EXPECT_EQ(rf(0.0, 1.5e-38, 3e37).err, "");
}

TEST(carlson_rj, takes_up_the_leading_12_of_rc) {
    // One pass: rc(16, 16) is 3, and three of it and a quarter of 1 make the sum.
    EXPECT_EQ(evaluate(math_func_carlsons_rj, 1.0, 1.0, 1.0, 1.0).value, 9.25);
}

// These terms are some 1e-17 of the sum. The published steps in double precision, which are roots and
// elementary operations alone, at arguments where 3/27 for 3/26 and 1.6 for the factor 1.5 change the last
// bit.
TEST(carlson_rj, has_the_terms_of_fifth_order) {
    EXPECT_EQ(evaluate(math_func_carlsons_rj, 0.99853515625, 0.99169921875, 0.9921875, 1.0009765625).value,
              9.285079187073148);
    EXPECT_EQ(evaluate(math_func_carlsons_rj, 1.00341796875, 0.9990234375, 0.9931640625, 1.0).value,
              9.260440572118286);
}

TEST(carlson_rj, tests_in_its_order) {
    const auto rj = [](double x, double y, double z, double p) {
        return evaluate(math_func_carlsons_rj, x, y, z, p);
    };
    constexpr const char* negative = "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n";
    constexpr const char* arg_error = "ERROR:  arg error in routine math_func_carlsons_rj().\n";
    for (const auto& [x, y, z] : {std::array{-1.0, 1.0, 1.0}, {1.0, -1.0, 1.0}, {1.0, 1.0, -1.0}})
        expect_refused(rj(x, y, z, 0.0), negative);
    expect_refused(rj(1.0, 1e-13, 1e-13, 1.0), arg_error);
    for (const double p : {0.0, 2e-13, -2e-13, 1e12, -1e12})
        expect_refused(rj(1.0, 1.0, 1.0, p), arg_error);
    expect_refused(rj(1.0, 1.0, 1e12, 1.0), arg_error);
    EXPECT_EQ(rj(1.0, 0.0, 2.5e-13, 1.0).err, "");
    EXPECT_EQ(rj(1.0, 1.0, 9e11, 9e11).err, "");
}

TEST(carlson_rj, does_not_look_at_the_sizes_of_x_and_y) {
    EXPECT_NE(evaluate(math_func_carlsons_rj, 1e12, 1.0, 1.0, 1.0).value, 0.0);
    EXPECT_NE(evaluate(math_func_carlsons_rj, 1.0, 1e12, 1.0, 1.0).value, 0.0);
    EXPECT_EQ(evaluate(math_func_carlsons_rj, 1e12, 1e12, 1.0, 1.0).err, "");
}

TEST(carlson_rj, of_two_vanishing_arguments_ends_by_underflow_with_a_text_for_each_late_pass) {
    for (const auto& [x, y, z] : {std::array{0.0, 0.0, 1.0}, {0.0, 1.0, 0.0}}) {
        const evaluated rj = evaluate(math_func_carlsons_rj, x, y, z, 1.0);
        EXPECT_TRUE(std::isnan(rj.value));
        EXPECT_TRUE(
            rj.err.starts_with("ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n"));
        EXPECT_TRUE(rj.err.ends_with("ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n"));
        EXPECT_LT(rj.err.size(), 100000U);
    }
}

TEST(carlson_rj, of_a_negative_p_is_no_number) {
    const evaluated rj = evaluate(math_func_carlsons_rj, 1.0, 2.0, 3.0, -1.0);
    EXPECT_TRUE(std::isnan(rj.value));
    EXPECT_EQ(rj.err, "");
}

std::string repeated(std::size_t count, const std::string& text) {
    std::string all;
    for (; count > 0; --count)
        all += text;
    return all;
}

// In every pass RC fails because of the size of its arguments and contributes 0. Distances of 1e308 fall
// below the tolerance after 14 passes, and the rest of the series underflows. If the mean itself overflows,
// the first pass is the last.
TEST(carlson_rj, of_huge_arguments_leaves_a_text_for_each_pass) {
    constexpr const char* too_big = "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n";
    expect_refused(evaluate(math_func_carlsons_rj, 1e308, 0.0, 1.0, 1.0), repeated(14, too_big).c_str());
    const evaluated overflowing = evaluate(math_func_carlsons_rj, 1e308, 1e308, 1.0, 1.0);
    EXPECT_TRUE(std::isnan(overflowing.value));
    EXPECT_EQ(overflowing.err, too_big);
}

TEST(carlson_forms, of_a_not_a_number_are_none_without_a_text) {
    for (const evaluated& f : {evaluate(math_func_carlsons_rj, quiet_nan, 1.0, 1.0, 1.0),
                               evaluate(math_func_carlsons_rj, 1.0, 1.0, 1.0, quiet_nan),
                               evaluate(math_func_carlsons_rd, quiet_nan, 1.0, 1.0),
                               evaluate(math_func_carlsons_rf, 1.0, 1.0, quiet_nan)}) {
        EXPECT_TRUE(std::isnan(f.value));
        EXPECT_EQ(f.err, "");
    }
}

TEST(carlson_rf, of_0_and_two_equal_numbers_is_a_quarter_turn_over_their_root) {
    for (const double y : {1e-37, 0.25, 3e37}) {
        const evaluated rf = evaluate(math_func_carlsons_rf, 0.0, y, y);
        EXPECT_NEAR(rf.value * std::sqrt(y), std::numbers::pi / 2.0, 1e-15);
        EXPECT_EQ(rf.err, "");
    }
}

TEST(elliptic_integrals, of_the_angle_0_are_0) {
    for (const double k : {0.0, 0.5, 1.0, 20.0}) {
        EXPECT_EQ(evaluate(math_func_elliptic_f, 0.0, k).value, 0.0);
        EXPECT_EQ(evaluate(math_func_elliptic_e, 0.0, k).value, 0.0);
        EXPECT_EQ(evaluate(math_func_elliptic_pi, 0.0, 0.5, k).value, 0.0);
    }
}

TEST(elliptic_integrals, of_modulus_0_are_the_angle) {
    EXPECT_NEAR(evaluate(math_func_elliptic_e, std::numbers::pi / 2.0, 0.0).value, std::numbers::pi / 2.0,
                1e-12);
    EXPECT_NEAR(evaluate(math_func_elliptic_f, 0.7, 0.0).value, 0.7, 1e-12);
    EXPECT_EQ(evaluate(math_func_elliptic_pi, 0.7, 0.0, 0.0).value,
              evaluate(math_func_elliptic_f, 0.7, 0.0).value);
}

TEST(elliptic_integrals, compute_on_with_the_zeros_of_refused_forms_in_the_order_written) {
    EXPECT_EQ(evaluate(math_func_elliptic_f, 1.0, 2.0).err,
              "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n");
    const evaluated e = evaluate(math_func_elliptic_e, 1.0, 2.0);
    EXPECT_EQ(e.value, 0.0);
    EXPECT_EQ(e.err, "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n"
                     "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n");
    const evaluated third_kind = evaluate(math_func_elliptic_pi, 1.0, 0.5, 2.0);
    EXPECT_EQ(third_kind.value, 0.0);
    EXPECT_EQ(third_kind.err, "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n"
                              "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n");
}

struct jacobi_values {
    double sn = 7.0;
    double cn = 7.0;
    double dn = 7.0;
};

jacobi_values jacobi(double u, double emmc) {
    jacobi_values f;
    work_text err;
    math_func_sncndn(u, emmc, f.sn, f.cn, f.dn, err.str);
    EXPECT_EQ(err.view(), "") << u << ' ' << emmc;
    return f;
}

TEST(jacobi_functions, of_a_vanishing_complement_are_hyperbolic) {
    const jacobi_values f = jacobi(0.5, 0.0);
    EXPECT_EQ(f.sn, std::tanh(0.5));
    EXPECT_EQ(f.cn, 1.0 / std::cosh(0.5));
    EXPECT_EQ(f.dn, f.cn);
}

TEST(jacobi_functions, of_the_complement_1_are_trigonometric) {
    for (const double u : {-2.0, 0.3, 1.0, 5.0}) {
        const jacobi_values f = jacobi(u, 1.0);
        EXPECT_NEAR(f.sn, std::sin(u), 1e-15);
        EXPECT_NEAR(f.cn, std::cos(u), 1e-15);
        EXPECT_EQ(f.dn, 1.0);
    }
}

TEST(jacobi_functions, at_0_are_exact) {
    for (const double emmc : {0.0, 0.3, 1.0, 2.0, -0.5}) {
        const jacobi_values f = jacobi(0.0, emmc);
        EXPECT_EQ(f.sn, 0.0);
        EXPECT_EQ(f.cn, 1.0);
        EXPECT_EQ(f.dn, 1.0);
    }
}

// A huge or tiny complement takes 11 of the 13 transformations that are allowed. The values of finite
// arguments are in the table of required values; here are those without a value.
TEST(jacobi_functions, of_infinities_and_nans_are_nans_without_a_text) {
    for (const double emmc : {quiet_nan, plus_infinity}) {
        for (const double u : {1.0, 1e308}) {
            const jacobi_values f = jacobi(u, emmc);
            EXPECT_TRUE(std::isnan(f.sn)) << u << ' ' << emmc;
            EXPECT_TRUE(std::isnan(f.cn)) << u << ' ' << emmc;
            EXPECT_TRUE(std::isnan(f.dn)) << u << ' ' << emmc;
        }
    }
    EXPECT_TRUE(std::isnan(jacobi(quiet_nan, 0.5).sn));
}

} // namespace
