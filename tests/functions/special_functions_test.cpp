// The special functions as the language sees them: the tests of their arguments and the order of these, the
// sentinel, how orders and moduli are passed to the routines, and the result of a failure.

#include "functions/special_functions.h"
#include "tests/functions/calling.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using namespace metrify::test;

std::vector<dim_value> ones(std::size_t count) {
    return std::vector<dim_value>(count, scalar(1.0));
}

std::string message(std::string_view name, const char* ending) {
    return "ERROR:  Computing " + std::string(name) + "() of " + ending + ".\n";
}

void expect_number(const outcome& result, double x) {
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(equal(result.value, scalar(x))) << result.value.comp[0] << " instead of " << x;
    EXPECT_EQ(result.depth, 2U);
}

TEST(special_functions, refuse_a_vector_in_any_place) {
    for (const special_function& row : special_functions) {
        const function_facts& function = row.about;
        for (std::size_t i = 0; i < argument_count(function); ++i) {
            std::vector<dim_value> given = ones(argument_count(function));
            given[i] = vector(1, 2, 3);
            expect_refused(call(function.name, given), message(function.name, "a vector"));
        }
    }
}

TEST(special_functions, refuse_a_dimensional_number_in_any_place) {
    for (const special_function& row : special_functions) {
        const function_facts& function = row.about;
        for (std::size_t i = 0; i < argument_count(function); ++i) {
            std::vector<dim_value> given = ones(argument_count(function));
            given[i] = scalar(1.0, meter);
            expect_refused(call(function.name, given), message(function.name, "a dimensional number"));
        }
    }
}

TEST(special_functions, test_the_last_argument_first_and_its_kind_before_its_units) {
    for (const special_function& row : special_functions) {
        const function_facts& function = row.about;
        std::vector<dim_value> given = ones(argument_count(function));
        given.back() = vector(1, 2, 3, meter);
        expect_refused(call(function.name, given), message(function.name, "a vector"));
        if (argument_count(function) == 1)
            continue;
        given.front() = vector(1, 2, 3);
        given.back() = scalar(1.0, meter);
        expect_refused(call(function.name, given), message(function.name, "a dimensional number"));
        given.front() = scalar(1.0, meter);
        given.back() = vector(1, 2, 3);
        expect_refused(call(function.name, given), message(function.name, "a vector"));
    }
}

TEST(special_functions, give_a_plain_0_for_the_sentinel_in_any_place) {
    for (const special_function& row : special_functions) {
        const function_facts& function = row.about;
        for (std::size_t i = 0; i < argument_count(function); ++i) {
            if (function.name == "CarlsonRJ" && i == 3)
                continue;
            std::vector<dim_value> given = ones(argument_count(function));
            given[i] = scalar(infinity_sentinel);
            expect_number(call(function.name, given), 0.0);
        }
    }
}

TEST(special_functions, carlson_rj_hands_an_infinite_p_to_its_routine) {
    std::vector<dim_value> given = ones(4);
    given[3] = scalar(infinity_sentinel);
    const outcome result = call("CarlsonRJ", given);
    EXPECT_EQ(result.err, "ERROR:  arg error in routine math_func_carlsons_rj().\n");
    given[0] = scalar(infinity_sentinel);
    expect_number(call("CarlsonRJ", given), 0.0);
}

TEST(special_functions, a_sentinel_does_not_hide_a_refusal) {
    expect_refused(call("BetaFunc", {scalar(1.0, meter), scalar(infinity_sentinel)}),
                   message("BetaFunc", "a dimensional number"));
    expect_refused(call("ExpIntN", {scalar(1.5), scalar(infinity_sentinel)}),
                   "ERROR:  Arg n must be integer in ExpIntN().\n");
}

TEST(special_functions, take_angle_and_amount_for_no_dimension_and_give_a_plain_number) {
    exponents mole = {};
    mole[dim_amount] = 1.0;
    for (const special_function& row : special_functions) {
        const function_facts& function = row.about;
        const outcome plain =
            call(function.name, std::vector<dim_value>(argument_count(function), scalar(0.5)));
        const outcome soft =
            call(function.name, std::vector<dim_value>(argument_count(function), scalar(0.5, radian)));
        EXPECT_EQ(plain.err, soft.err) << function.name;
        EXPECT_TRUE(equal(plain.value, soft.value)) << function.name;
        EXPECT_TRUE(equal(
            plain.value,
            call(function.name, std::vector<dim_value>(argument_count(function), scalar(0.5, mole))).value))
            << function.name;
        EXPECT_EQ(soft.value.dim, exponents{}) << function.name;
    }
    work_text err;
    expect_number(call("EllipticF", {scalar(0.5235987755982988, radian), scalar(0.5)}),
                  math_func_elliptic_f(0.5235987755982988, 0.5, err.str));
    EXPECT_EQ(answer("EllipticF(30 deg, 0.5)"), answer("EllipticF(0.5235987755982988, 0.5)"));
}

TEST(special_functions, whole_bessel_orders_go_to_the_integer_routines) {
    work_text err;
    expect_number(call("BesselJ", {scalar(2.0), scalar(3.0)}), math_func_bessj(2, 3.0, err.str));
    expect_number(call("BesselY", {scalar(-2.0), scalar(3.0)}), math_func_bessy(-2, 3.0, err.str));
    expect_number(call("BesselI", {scalar(2.0), scalar(3.0)}), math_func_bessi(2, 3.0, err.str));
    expect_number(call("BesselK", {scalar(2.0), scalar(3.0)}), math_func_bessk(2, 3.0, err.str));
    expect_number(call("BesselJ", {scalar(-0.0), scalar(0.0)}), 57568490574.0 / 57568490411.0);
}

TEST(special_functions, other_bessel_orders_go_to_the_real_routines) {
    work_text err;
    expect_number(call("BesselJ", {scalar(2.5), scalar(3.0)}), math_func_bessj_frac(2.5, 3.0, err.str));
    expect_number(call("BesselY", {scalar(-2.5), scalar(3.0)}), math_func_bessy_frac(-2.5, 3.0, err.str));
    expect_number(call("BesselI", {scalar(2.5), scalar(3.0)}), math_func_bessi_frac(2.5, 3.0, err.str));
    expect_number(call("BesselK", {scalar(-2.5), scalar(3.0)}), math_func_bessk_frac(-2.5, 3.0, err.str));
}

TEST(special_functions, a_bessel_order_beyond_32_bits_is_out_of_range) {
    for (const double n : {-2147483648.0, 2147483648.0, 1e300, -1e300, -infinity_sentinel}) {
        const outcome result = call("BesselJ", {scalar(n), scalar(1.0)});
        EXPECT_EQ(result.err, "ERROR:   order out of range in math_func_bessj().\n") << n;
        EXPECT_TRUE(equal(result.value, scalar(0.0))) << n;
    }
    EXPECT_EQ(call("BesselJ", {scalar(2147483647.0), scalar(1.0)}).err, "");
}

TEST(special_functions, a_bessel_order_that_is_no_number_goes_to_the_real_routine) {
    EXPECT_EQ(call("BesselK", {scalar(not_a_number), scalar(1.0)}).err,
              "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
}

TEST(special_functions, expintn_refuses_an_order_that_is_not_whole) {
    for (const double n : {1.5, -0.5, not_a_number})
        expect_refused(call("ExpIntN", {scalar(n), scalar(2.0)}),
                       "ERROR:  Arg n must be integer in ExpIntN().\n");
    expect_refused(call("ExpIntN", {scalar(1.5), scalar(2.0, meter)}),
                   message("ExpIntN", "a dimensional number"));
    expect_refused(call("ExpIntN", {scalar(1.5, meter), scalar(2.0)}),
                   message("ExpIntN", "a dimensional number"));
    expect_number(call("ExpIntN", {scalar(2.0), scalar(0.0)}), 1.0);
}

TEST(special_functions, gamma_takes_no_exponential_of_a_value_with_a_text) {
    EXPECT_NEAR(call("GammaFunc", {scalar(5.0)}).value.comp[0], 24.0, 1e-8);
    const outcome failed = call("GammaFunc", {scalar(-1.0)});
    EXPECT_EQ(failed.err, "ERROR: x must be > 0 in in routine math_func_gammln().\n");
    EXPECT_TRUE(equal(failed.value, scalar(0.0)));
    EXPECT_EQ(failed.depth, 2U);
}

TEST(special_functions, a_routine_that_fails_leaves_its_value_as_the_result) {
    const outcome beta = call("BetaFunc", {scalar(-1.0), scalar(-1.0)});
    EXPECT_TRUE(equal(beta.value, scalar(1.0)));
    EXPECT_NE(beta.err, "");
    const outcome q = call("GammaQFunc", {scalar(1e5), scalar(1e5)});
    EXPECT_TRUE(equal(q.value, scalar(1.0)));
    EXPECT_NE(q.err, "");
    EXPECT_EQ(q.depth, 2U);
}

TEST(special_functions, an_infinite_result_is_the_sentinel_without_a_text) {
    expect_number(call("BesselK", {scalar(0.0), scalar(0.0)}), infinity_sentinel);
    expect_number(call("ExpIntEi", {scalar(1000.0)}), infinity_sentinel);
}

TEST(special_functions, airy_gives_the_first_two_outputs) {
    expect_number(call("AiryAi", {scalar(0.0)}), 0.3550280538878172);
    expect_number(call("AiryBi", {scalar(0.0)}), 0.6149266274460007);
}

TEST(special_functions, jacobi_takes_the_square_of_its_modulus) {
    double sn = 0.0;
    double cn = 0.0;
    double dn = 0.0;
    work_text err;
    math_func_sncndn(0.5, 0.25, sn, cn, dn, err.str);
    expect_number(call("JacobiSN", {scalar(0.5), scalar(0.5)}), sn);
    expect_number(call("JacobiCN", {scalar(0.5), scalar(-0.5)}), cn);
    expect_number(call("JacobiDN", {scalar(0.5), scalar(0.5)}), dn);
    expect_number(call("JacobiSN", {scalar(0.5), scalar(0.0)}), std::tanh(0.5));
}

TEST(special_functions, jacobi_is_not_called_with_an_infinite_square) {
    for (const char* name : {"JacobiSN", "JacobiCN", "JacobiDN"})
        for (const double k : {1e200, -1e200, -infinity_sentinel})
            expect_number(call(name, {scalar(0.5), scalar(k)}), 0.0);
}

TEST(special_functions, hand_their_arguments_over_in_the_order_written) {
    work_text err;
    expect_number(call("BetaFunc", {scalar(2.0), scalar(3.5)}), math_func_beta(2.0, 3.5, err.str));
    expect_number(call("CarlsonRC", {scalar(2.0), scalar(3.5)}), math_func_carlsons_rc(2.0, 3.5, err.str));
    expect_number(call("CarlsonRD", {scalar(2.0), scalar(3.5), scalar(0.3)}),
                  math_func_carlsons_rd(2.0, 3.5, 0.3, err.str));
    expect_number(call("CarlsonRF", {scalar(2.0), scalar(3.5), scalar(0.3)}),
                  math_func_carlsons_rf(2.0, 3.5, 0.3, err.str));
    expect_number(call("CarlsonRJ", {scalar(2.0), scalar(3.5), scalar(0.3), scalar(0.8)}),
                  math_func_carlsons_rj(2.0, 3.5, 0.3, 0.8, err.str));
    expect_number(call("EllipticE", {scalar(0.4), scalar(0.7)}), math_func_elliptic_e(0.4, 0.7, err.str));
    expect_number(call("EllipticPi", {scalar(0.4), scalar(0.2), scalar(0.7)}),
                  math_func_elliptic_pi(0.4, 0.2, 0.7, err.str));
    expect_number(call("GammaPFunc", {scalar(0.4), scalar(0.7)}), math_func_gammp(0.4, 0.7, err.str));
    expect_number(call("GammaQFunc", {scalar(0.4), scalar(0.7)}), math_func_gammq(0.4, 0.7, err.str));
    expect_number(call("IncBetaFunc", {scalar(2.0), scalar(3.5), scalar(0.3)}),
                  math_func_betai(2.0, 3.5, 0.3, err.str));
    expect_number(call("ExpIntN", {scalar(2.0), scalar(0.3)}), math_func_expint(2, 0.3, err.str));
}

TEST(special_functions, of_one_argument_call_their_routines) {
    work_text err;
    expect_number(call("DawsonIntegral", {scalar(0.7)}), math_func_dawson(0.7));
    expect_number(call("Erf", {scalar(0.7)}), math_func_erf(0.7, err.str));
    expect_number(call("Erfc", {scalar(0.7)}), math_func_erfc(0.7, err.str));
    expect_number(call("ExpInt", {scalar(0.7)}), math_func_expint(1, 0.7, err.str));
    expect_number(call("ExpIntEi", {scalar(0.7)}), math_func_ei(0.7, err.str));
    expect_number(call("LogGammaFunc", {scalar(0.7)}), math_func_gammln(0.7, err.str));
    expect_number(call("Normsdist", {scalar(0.7)}), math_func_CumNormal(0.7));
    expect_number(call("Normsinv", {scalar(0.7)}), math_func_CumNormalInv(0.7, err.str));
}

} // namespace
