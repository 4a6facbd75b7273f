#include "numerics/airy.h"

#include "numerics/bessel_real.h"

#include <cmath>
#include <numbers>

namespace metrify {

namespace {

constexpr double one_over_root_three = 0.5773502691896257;
constexpr double two_over_root_three = 1.1547005383792515;
constexpr double one_third = 1.0 / 3.0;
constexpr double two_thirds = 2.0 * one_third;

} // namespace

void math_func_airy(double x, double& ai, double& bi, double& ai_prime, double& bi_prime, text_str*& err) {
    using std::numbers::pi;
    const double ax = std::fabs(x);
    const double root = std::sqrt(ax);
    const double z = 2.0 * ax * root / 3.0;
    double first = 0.0;
    double second = 0.0;
    double first_prime = 0.0;
    double second_prime = 0.0;
    if (x > 0.0) {
        math_func_bessik(z, one_third, first, second, first_prime, second_prime, err);
        ai = root * one_over_root_three * second / pi;
        bi = root * (second / pi + two_over_root_three * first);
        math_func_bessik(z, two_thirds, first, second, first_prime, second_prime, err);
        ai_prime = -x * one_over_root_three * second / pi;
        bi_prime = x * (second / pi + two_over_root_three * first);
    } else if (x < 0.0) {
        math_func_bessjy(z, one_third, first, second, first_prime, second_prime, err);
        ai = 0.5 * root * (first - one_over_root_three * second);
        bi = -0.5 * root * (second + one_over_root_three * first);
        math_func_bessjy(z, two_thirds, first, second, first_prime, second_prime, err);
        ai_prime = 0.5 * ax * (one_over_root_three * second + first);
        bi_prime = 0.5 * ax * (one_over_root_three * first - second);
    } else {
        ai = 0.3550280538878172;
        bi = 0.6149266274460007;
        ai_prime = -0.2588194037928068;
        bi_prime = 0.44828835735382644;
    }
}

} // namespace metrify
