#include "tests/numerics/routines.h"

#include "numerics/special/bessel/airy.h"
#include "numerics/special/bessel/bessel_fits.h"
#include "numerics/special/bessel/bessel_integer.h"
#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/carlson.h"
#include "numerics/special/elliptic.h"
#include "numerics/special/error_functions.h"
#include "numerics/special/exponential_integrals.h"
#include "numerics/special/gamma_functions.h"
#include "numerics/special/jacobi.h"

#include <cstdint>

namespace metrify::test {

namespace {

using one_argument = double (*)(double);
using one_argument_or_text = double (*)(double, text_str*&);
using two_arguments = double (*)(double, double, text_str*&);
using integer_order = double (*)(std::int32_t, double, text_str*&);
using three_arguments = double (*)(double, double, double, text_str*&);
using four_arguments = double (*)(double, double, double, double, text_str*&);
using two_outputs = void (*)(double&, double, double, double&, text_str*&);
using four_outputs_of_one = void (*)(double, double&, double&, double&, double&, text_str*&);
using four_outputs_of_two = void (*)(double, double, double&, double&, double&, double&, text_str*&);
using three_outputs = void (*)(double, double, double&, double&, double&, text_str*&);

template <one_argument f>
routine_outputs call(const routine_arguments& x, text_str*&) {
    return {f(x[0])};
}
template <one_argument_or_text f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    return {f(x[0], err)};
}
template <two_arguments f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    return {f(x[0], x[1], err)};
}
template <integer_order f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    return {f(static_cast<std::int32_t>(x[0]), x[1], err)};
}
template <three_arguments f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    return {f(x[0], x[1], x[2], err)};
}
template <four_arguments f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    return {f(x[0], x[1], x[2], x[3], err)};
}
template <two_outputs f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    routine_outputs out = {};
    f(out[0], x[0], x[1], out[1], err);
    return out;
}
template <four_outputs_of_one f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    routine_outputs out = {};
    f(x[0], out[0], out[1], out[2], out[3], err);
    return out;
}
template <four_outputs_of_two f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    routine_outputs out = {};
    f(x[0], x[1], out[0], out[1], out[2], out[3], err);
    return out;
}
template <three_outputs f>
routine_outputs call(const routine_arguments& x, text_str*& err) {
    routine_outputs out = {};
    f(x[0], x[1], out[0], out[1], out[2], err);
    return out;
}

// clang-format off
constexpr routine routines[] = {
    // name, arguments, outputs, call, bounds of the errors: against the function, against what is required
    {"math_func_bessj0", 1, 1, call<math_func_bessj0>, 2e-8, 2e-15},
    {"math_func_bessj1", 1, 1, call<math_func_bessj1>, 2e-8, 2e-15},
    {"math_func_bessy0", 1, 1, call<math_func_bessy0>, 7e-8, 2e-15},
    {"math_func_bessy1", 1, 1, call<math_func_bessy1>, 5e-8, 2e-15},
    {"math_func_bessi0", 1, 1, call<math_func_bessi0>, 5e-7, 2e-15},
    {"math_func_bessi1", 1, 1, call<math_func_bessi1>, 6e-7, 2e-15},
    {"math_func_bessk0", 1, 1, call<math_func_bessk0>, 1.6e-7, 2e-15},
    {"math_func_bessk1", 1, 1, call<math_func_bessk1>, 1.8e-7, 2e-15},
    {"math_func_bessj", 2, 1, call<math_func_bessj>, 5.5e-7, 2e-15},
    {"math_func_bessy", 2, 1, call<math_func_bessy>, 6.5e-8, 1e-14},
    {"math_func_bessi", 2, 1, call<math_func_bessi>, 5.5e-7, 5e-15},
    {"math_func_bessk", 2, 1, call<math_func_bessk>, 1.6e-7, 5e-15},
    {"math_func_bessj_frac", 2, 1, call<math_func_bessj_frac>, 1e-13, not_stated},
    {"math_func_bessy_frac", 2, 1, call<math_func_bessy_frac>, 1e-13, not_stated},
    {"math_func_bessi_frac", 2, 1, call<math_func_bessi_frac>, 1e-13, not_stated},
    {"math_func_bessk_frac", 2, 1, call<math_func_bessk_frac>, 1e-13, not_stated},
    {"math_func_bessjy", 2, 4, call<math_func_bessjy>, 1e-13, not_stated},
    {"math_func_bessik", 2, 4, call<math_func_bessik>, 1e-13, not_stated},
    {"math_func_airy", 1, 4, call<math_func_airy>, 1e-13, not_stated},
    {"math_func_gammln", 1, 1, call<math_func_gammln>, 2e-13, 3e-15},
    {"math_func_gammp", 2, 1, call<math_func_gammp>, 3.2e-7, 5e-14},
    {"math_func_gammq", 2, 1, call<math_func_gammq>, 5e-7, 5e-14},
    {"math_func_gser", 2, 2, call<math_func_gser>, 3.2e-7, 5e-14},
    {"math_func_gcf", 2, 2, call<math_func_gcf>, 5e-7, 5e-14},
    {"math_func_beta", 2, 1, call<math_func_beta>, 7e-11, 2e-13},
    {"math_func_betai", 3, 1, call<math_func_betai>, 2.4e-7, 5e-14},
    {"math_func_betacf", 3, 1, call<math_func_betacf>, 2.4e-7, 0.0},
    {"math_func_erf", 1, 1, call<math_func_erf>, 4e-8, 3e-15},
    {"math_func_erfc", 1, 1, call<math_func_erfc>, 3e-7, 5e-14},
    {"math_func_expint", 2, 1, call<math_func_expint>, 5e-7, 3e-15},
    {"math_func_ei", 1, 1, call<math_func_ei>, 2.3e-7, 3e-15},
    {"math_func_dawson", 1, 1, call<math_func_dawson>, 4.2e-7, 3e-15},
    {"math_func_CumNormal", 1, 1, call<math_func_CumNormal>, 2.6e-9, 0.0},
    {"math_func_CumNormalInv", 1, 1, call<math_func_CumNormalInv>, 4e-9, 1e-15},
    {"math_func_carlsons_rc", 2, 1, call<math_func_carlsons_rc>, 1e-15, 0.0},
    {"math_func_carlsons_rd", 3, 1, call<math_func_carlsons_rd>, 1e-15, 0.0},
    {"math_func_carlsons_rf", 3, 1, call<math_func_carlsons_rf>, 1e-15, 0.0},
    {"math_func_carlsons_rj", 4, 1, call<math_func_carlsons_rj>, 1.5e-15, 0.0},
    {"math_func_elliptic_f", 2, 1, call<math_func_elliptic_f>, 4e-14, 5e-14},
    {"math_func_elliptic_e", 2, 1, call<math_func_elliptic_e>, 4e-15, 4e-15},
    {"math_func_elliptic_pi", 3, 1, call<math_func_elliptic_pi>, 4e-15, 4e-15},
    // Where sn is small, a last digit of the sine of a huge angle counts a hundredfold.
    {"math_func_sncndn", 2, 3, call<math_func_sncndn>, 1.4e-8, 2e-14},
};
// clang-format on

} // namespace

std::span<const routine> all_routines() {
    return routines;
}

} // namespace metrify::test
