// The special functions of the GNU Scientific Library, at the same points.

#include "bench/special_points.h"

#include <gsl/gsl_cdf.h>
#include <gsl/gsl_sf.h>

namespace {

using metrify::bench::special_arguments;

template <class Call>
void measure_gsl(std::string_view routine, std::size_t arguments, Call call) {
    metrify::bench::measure(routine, arguments, "gsl", call);
}

template <double (*f)(double)>
void measure_one(std::string_view routine) {
    measure_gsl(
        routine, 1, [](const special_arguments& x) { return f(x[0]); });
}
template <double (*f)(double, double)>
void measure_two(std::string_view routine) {
    measure_gsl(
        routine, 2, [](const special_arguments& x) { return f(x[0], x[1]); });
}
template <double (*f)(int, double)>
void measure_order(std::string_view routine) {
    measure_gsl(
        routine, 2, [](const special_arguments& x) { return f(static_cast<int>(x[0]), x[1]); });
}

void measure_bessel() {
    measure_one<gsl_sf_bessel_J0>("bessj0");
    measure_one<gsl_sf_bessel_J1>("bessj1");
    measure_one<gsl_sf_bessel_Y0>("bessy0");
    measure_one<gsl_sf_bessel_Y1>("bessy1");
    measure_one<gsl_sf_bessel_I0>("bessi0");
    measure_one<gsl_sf_bessel_I1>("bessi1");
    measure_one<gsl_sf_bessel_K0>("bessk0");
    measure_one<gsl_sf_bessel_K1>("bessk1");
    measure_order<gsl_sf_bessel_Jn>("bessj");
    measure_order<gsl_sf_bessel_Yn>("bessy");
    measure_order<gsl_sf_bessel_In>("bessi");
    measure_order<gsl_sf_bessel_Kn>("bessk");
    measure_two<gsl_sf_bessel_Jnu>("bessj_frac");
    measure_two<gsl_sf_bessel_Ynu>("bessy_frac");
    measure_two<gsl_sf_bessel_Inu>("bessi_frac");
    measure_two<gsl_sf_bessel_Knu>("bessk_frac");
    // All four values, as our routine computes.
    measure_gsl("airy", 1, [](const special_arguments& x) {
        return gsl_sf_airy_Ai(x[0], GSL_PREC_DOUBLE) + gsl_sf_airy_Bi(x[0], GSL_PREC_DOUBLE) +
               gsl_sf_airy_Ai_deriv(x[0], GSL_PREC_DOUBLE) + gsl_sf_airy_Bi_deriv(x[0], GSL_PREC_DOUBLE);
    });
}

void measure_gamma_and_integrals() {
    measure_one<gsl_sf_lngamma>("gammln");
    measure_two<gsl_sf_gamma_inc_P>("gammp");
    measure_two<gsl_sf_gamma_inc_Q>("gammq");
    measure_two<gsl_sf_beta>("beta");
    measure_gsl("betai", 3, [](const special_arguments& x) { return gsl_sf_beta_inc(x[0], x[1], x[2]); });
    measure_one<gsl_sf_erf>("erf");
    measure_one<gsl_sf_erfc>("erfc");
    measure_order<gsl_sf_expint_En>("expint");
    measure_one<gsl_sf_expint_Ei>("ei");
    measure_one<gsl_sf_dawson>("dawson");
    measure_one<gsl_cdf_ugaussian_P>("CumNormal");
    measure_one<gsl_cdf_ugaussian_Pinv>("CumNormalInv");
}

void measure_elliptic() {
    constexpr gsl_mode_t mode = GSL_PREC_DOUBLE;
    measure_gsl(
        "carlsons_rc", 2, [](const special_arguments& x) { return gsl_sf_ellint_RC(x[0], x[1], mode); });
    measure_gsl(
        "carlsons_rd", 3,
        [](const special_arguments& x) { return gsl_sf_ellint_RD(x[0], x[1], x[2], mode); });
    measure_gsl(
        "carlsons_rf", 3,
        [](const special_arguments& x) { return gsl_sf_ellint_RF(x[0], x[1], x[2], mode); });
    measure_gsl(
        "carlsons_rj", 4,
        [](const special_arguments& x) { return gsl_sf_ellint_RJ(x[0], x[1], x[2], x[3], mode); });
    measure_gsl(
        "elliptic_f", 2, [](const special_arguments& x) { return gsl_sf_ellint_F(x[0], x[1], mode); });
    measure_gsl(
        "elliptic_e", 2, [](const special_arguments& x) { return gsl_sf_ellint_E(x[0], x[1], mode); });
    measure_gsl("elliptic_pi", 3,
                [](const special_arguments& x) { return gsl_sf_ellint_P(x[0], x[2], x[1], mode); });
    measure_gsl("sncndn", 2, [](const special_arguments& x) {
        double sn = 0.0;
        double cn = 0.0;
        double dn = 0.0;
        gsl_sf_elljac_e(x[0], 1.0 - x[1], &sn, &cn, &dn);
        return sn + cn + dn;
    });
}

const bool registered = [] {
    measure_bessel();
    measure_gamma_and_integrals();
    measure_elliptic();
    return true;
}();

} // namespace
