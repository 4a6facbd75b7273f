#include "numerics/special/bessel/airy.h"

#include "numerics/special/bessel/bessel_real.h"
#include "numerics/special/bessel/exact_product.h"

#include <cmath>
#include <numbers>

namespace metrify {

namespace {

constexpr double one_over_root_three = 0.5773502691896257;
constexpr double two_over_root_three = 1.1547005383792515;
constexpr double one_third = 1.0 / 3.0;
constexpr double two_thirds = 2.0 * one_third;

/// The argument of the Bessel functions, 2/3 x sqrt(x), for x >= 0.
struct bessel_argument {
    explicit bessel_argument(double x) : root(std::sqrt(x)), z(2.0 * x * root / 3.0) {
        // 3 z and 2 x sqrt(x) differ by roundoff only; the differences here are exact.
        const double product = 2.0 * x * root;
        const double rest_of_root = (x - root * root - rest_of_product(root, root)) / root;
        rest = (product - 2.0 * z - z + 2.0 * rest_of_product(x, root) + x * rest_of_root) / 3.0;
    }

    /// A function at the exact argument, from its value and derivative at z. Without this correction the
    /// rounding of z would cost as many digits as z has before its point.
    double corrected(double value, double slope) const {
        return std::isfinite(slope) ? value + slope * rest : value;
    }

    double root;
    double z;
    double rest; // the exact argument minus z
};

/// Two Bessel functions of one order at the exact argument.
struct both_kinds {
    double first, second;
};

using bessel_routine = void (*)(double, double, double&, double&, double&, double&, text_str*&);

both_kinds at_order(bessel_routine routine, double order, const bessel_argument& argument, text_str*& err) {
    both_kinds f = {};
    double first_prime = 0.0;
    double second_prime = 0.0;
    routine(argument.z, order, f.first, f.second, first_prime, second_prime, err);
    return {argument.corrected(f.first, first_prime), argument.corrected(f.second, second_prime)};
}

} // namespace

void math_func_airy(double x, double& ai, double& bi, double& ai_prime, double& bi_prime, text_str*& err) {
    using std::numbers::pi;
    const double ax = std::fabs(x);
    const bessel_argument argument(ax);
    const double root = argument.root;
    if (x > 0.0) {
        const both_kinds low = at_order(math_func_bessik, one_third, argument, err);
        ai = root * one_over_root_three * low.second / pi;
        bi = root * (low.second / pi + two_over_root_three * low.first);
        const both_kinds high = at_order(math_func_bessik, two_thirds, argument, err);
        ai_prime = -x * one_over_root_three * high.second / pi;
        bi_prime = x * (high.second / pi + two_over_root_three * high.first);
    } else if (x < 0.0) {
        const both_kinds low = at_order(math_func_bessjy, one_third, argument, err);
        ai = 0.5 * root * (low.first - one_over_root_three * low.second);
        bi = -0.5 * root * (low.second + one_over_root_three * low.first);
        const both_kinds high = at_order(math_func_bessjy, two_thirds, argument, err);
        ai_prime = 0.5 * ax * (one_over_root_three * high.second + high.first);
        bi_prime = 0.5 * ax * (one_over_root_three * high.first - high.second);
    } else {
        ai = 0.3550280538878172;
        bi = 0.6149266274460007;
        ai_prime = -0.2588194037928068;
        bi_prime = 0.44828835735382644;
    }
}

} // namespace metrify
