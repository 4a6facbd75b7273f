#include "numerics/special/error_functions.h"

#include "base/failure.h"
#include "numerics/scalar_helpers.h"
#include "numerics/special/gamma_functions.h"
#include "numerics/special/polynomial.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace metrify {

namespace {

constexpr double H = 0.4; // the step of Rybicki's sampling
constexpr std::size_t NMAX = 6;

std::array<double, NMAX> dawson_factors() {
    std::array<double, NMAX> factors = {};
    for (std::size_t i = 0; i < NMAX; ++i)
        factors[i] = std::exp(-square((2.0 * static_cast<double>(i + 1) - 1.0) * H));
    return factors;
}

/// Dawson's integral of ax >= 0.2, for ax small enough that the index of the nearest sample is a 32-bit
/// integer.
double sampled_dawson(double ax) {
    static const std::array<double, NMAX> factors = dawson_factors();
    const double n0 = 2.0 * std::trunc(0.5 * ax / H + 0.5);
    const double xp = ax - n0 * H;
    double e1 = std::exp(2.0 * xp * H);
    const double e2 = e1 * e1;
    double d1 = n0 + 1.0;
    double d2 = d1 - 2.0;
    double sum = 0.0;
    for (const double factor : factors) {
        sum += factor * (e1 / d1 + 1.0 / (d2 * e1));
        d1 += 2.0;
        d2 -= 2.0;
        e1 *= e2;
    }
    constexpr double one_over_root_pi = 0.5641895835;
    return one_over_root_pi * std::exp(-xp * xp) * sum;
}

} // namespace

double math_func_erf(double x, text_str*& err) {
    const double p = math_func_gammp(0.5, x * x, err);
    return x < 0.0 ? -p : p;
}

double math_func_erfc(double x, text_str*& err) {
    return x < 0.0 ? 1.0 + math_func_gammp(0.5, x * x, err) : math_func_gammq(0.5, x * x, err);
}

double math_func_CumNormal(double x) {
    const double a = std::fabs(x);
    if (a < 1.87) {
        const double t = x * x;
        const double above = polynomial(t, std::array{0.398942270991, 0.020133760596, 0.002946756074});
        const double below = polynomial(t, std::array{1.0, 0.217134277847, 0.018576112465, 0.000643163695});
        return 0.5 + x * above / below;
    }
    if (a < 6.0) {
        const double above = polynomial(a, std::array{1.398247031184, -0.360040248231, 0.022719786588});
        const double below =
            polynomial(a, std::array{1.460954518699, -0.305459640162, 0.038611796258, -0.003787400686});
        double r = above / below;
        for (int i = 0; i < 4; ++i)
            r *= r;
        return x >= 0.0 ? 1.0 - r : r;
    }
    return x >= 0.0 ? 1.0 : 0.0;
}

double math_func_CumNormalInv(double p, text_str*& err) {
    if (p < 0.0)
        return numeric_failure(err, "ERROR: n must be >= 0 in in routine math_func_CumNormalInv().\n");
    if (p > 1.0)
        return numeric_failure(err, "ERROR: n must be <= 1 in in routine math_func_CumNormalInv().\n");
    const double inside = std::clamp(p, 1e-16, 0.9999999999999999);
    const double y = inside - 0.5;
    if (std::fabs(y) < 0.42) {
        const double r = y * y;
        const double above =
            polynomial(r, std::array{2.50662823884, -18.61500062529, 41.39119773534, -25.44106049637});
        const double below =
            polynomial(r, std::array{1.0, -8.4735109309, 23.08336743743, -21.06224101826, 3.13082909833});
        return y * above / below;
    }
    const double s = std::log(-std::log(y > 0.0 ? 1.0 - inside : inside));
    const double tail = polynomial(s, std::array{0.3374754822726147, 0.9761690190917186, 0.1607979714918209,
                                                 0.0276438810333863, 0.0038405729373609, 0.0003951896511919,
                                                 3.21767881768e-05, 2.888167364e-07, 3.960315187e-07});
    return y < 0.0 ? -tail : tail;
}

double math_func_dawson(double x) {
    const double ax = std::fabs(x);
    if (ax < 0.2) {
        constexpr double A1 = 2.0 / 3.0;
        constexpr double A2 = 0.4;
        constexpr double A3 = 2.0 / 7.0;
        const double x2 = x * x;
        return x * (1.0 - A1 * x2 * (1.0 - A2 * x2 * (1.0 - A3 * x2)));
    }
    constexpr double last_sampled = 8e8;
    if (ax > last_sampled)
        return 0.5 / x;
    return x < 0.0 ? -sampled_dawson(ax) : sampled_dawson(ax);
}

} // namespace metrify
