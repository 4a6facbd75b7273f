#include "numerics/special/bessel/bessel_fits.h"

#include "numerics/scalar_helpers.h"
#include "numerics/special/polynomial.h"
#include "numerics/special/trigonometry.h"

#include <array>
#include <cmath>

namespace metrify {

namespace {

constexpr double two_over_pi = 0.636619772;

// Beyond 8, J and Y of one order have a common amplitude and phase: with z = 8/|x| they are sqrt(2/(pi |x|))
// times cos(phase) P - z sin(phase) Q, and sin(phase) P + z cos(phase) Q.
struct asymptotic_fit {
    double shift; // of the phase
    std::array<double, 5> p, q;
};

constexpr std::array<double, 5> order_0_p = {1.0, -0.1098628627e-2, 0.2734510407e-4, -0.2073370639e-5,
                                             0.2093887211e-6};
// Intentional: J and Y differ in the last coefficient.
constexpr asymptotic_fit fit_j0 = {
    0.785398164,
    order_0_p,
    {-0.1562499995e-1, 0.1430488765e-3, -0.6911147651e-5, 0.7621095161e-6, -9.34935152e-8}};
constexpr asymptotic_fit fit_y0 = {
    0.785398164,
    order_0_p,
    {-0.1562499995e-1, 0.1430488765e-3, -0.6911147651e-5, 0.7621095161e-6, -9.34945152e-8}};
constexpr asymptotic_fit fit_order_1 = {
    2.356194491,
    {1.0, 0.183105e-2, -0.3516396496e-4, 0.2457520174e-5, -0.240337019e-6},
    {0.04687499995, -0.2002690873e-3, 0.8449199096e-5, -0.88228987e-6, 0.105787412e-6}};

struct asymptotic_terms {
    asymptotic_terms(double x, const asymptotic_fit& fit)
        : z(8.0 / x), sine_of_phase(sine(x - fit.shift)), cosine_of_phase(cosine(x - fit.shift)),
          p(polynomial(z * z, fit.p)), q(polynomial(z * z, fit.q)), size(std::sqrt(two_over_pi / x)) {}

    double z;
    double sine_of_phase, cosine_of_phase;
    double p, q;
    double size;
};

double asymptotic_j(double ax, const asymptotic_fit& fit) {
    const asymptotic_terms at(ax, fit);
    return at.size * (at.cosine_of_phase * at.p - at.z * at.sine_of_phase * at.q);
}

double asymptotic_y(double x, const asymptotic_fit& fit) {
    const asymptotic_terms at(x, fit);
    return at.size * (at.sine_of_phase * at.p + at.z * at.cosine_of_phase * at.q);
}

} // namespace

double math_func_bessj0(double x) {
    constexpr std::array<double, 6> above = {57568490574.0, -13362590354.0, 651619640.7,
                                             -11214424.18,  77392.33017,    -184.9052456};
    constexpr std::array<double, 6> below = {57568490411.0, 1029532985.0, 9494680.718,
                                             59272.64853,   267.8532712,  1.0};
    const double ax = std::fabs(x);
    if (ax < 8.0) {
        const double y = x * x;
        return polynomial(y, above) / polynomial(y, below);
    }
    return asymptotic_j(ax, fit_j0);
}

double math_func_bessj1(double x) {
    constexpr std::array<double, 6> above = {72362614232.0, -7895059235.0, 242396853.1,
                                             -2972611.439,  15704.48260,   -30.16036606};
    constexpr std::array<double, 6> below = {144725228442.0, 2300535178.0, 18583304.74,
                                             99447.43394,    376.9991397,  1.0};
    const double ax = std::fabs(x);
    if (ax < 8.0) {
        const double y = x * x;
        return x * polynomial(y, above) / polynomial(y, below);
    }
    const double value = asymptotic_j(ax, fit_order_1);
    return x < 0.0 ? -value : value;
}

double math_func_bessy0(double x) {
    constexpr std::array<double, 6> above = {-2957821389.0, 7062834065.0, -512359803.6,
                                             10879881.29,   -86327.92757, 228.4622733};
    constexpr std::array<double, 6> below = {40076544269.0, 745249964.8, 7189466.438,
                                             47447.26470,   226.1030244, 1.0};
    if (x < 8.0) {
        const double y = x * x;
        return polynomial(y, above) / polynomial(y, below) + two_over_pi * math_func_bessj0(x) * std::log(x);
    }
    return asymptotic_y(x, fit_y0);
}

double math_func_bessy1(double x) {
    constexpr std::array<double, 6> above = {-0.4900604943e13, 0.1275274390e13, -0.5153438139e11,
                                             0.7349264551e9,   -0.4237922726e7, 0.8511937935e4};
    constexpr std::array<double, 7> below = {0.2499580570e14,
                                             0.4244419664e12,
                                             0.3733650367e10,
                                             0.2245904002e8,
                                             0.1020426050e6,
                                             0.3549632885e3,
                                             1.0};
    if (x < 8.0) {
        const double y = x * x;
        return x * polynomial(y, above) / polynomial(y, below) +
               two_over_pi * (math_func_bessj1(x) * std::log(x) - 1.0 / x);
    }
    return asymptotic_y(x, fit_order_1);
}

double math_func_bessi0(double x) {
    constexpr std::array<double, 7> small = {1.0,       3.5156229,   3.0899424, 1.2067492,
                                             0.2659732, 0.360768e-1, 0.45813e-2};
    constexpr std::array<double, 9> large = {0.39894228,   0.1328592e-1,  0.225319e-2,
                                             -0.157565e-2, 0.916281e-2,   -0.2057706e-1,
                                             0.2635537e-1, -0.1647633e-1, 0.392377e-2};
    const double ax = std::fabs(x);
    if (ax < 3.75)
        return polynomial(square(x / 3.75), small);
    return std::exp(ax) / std::sqrt(ax) * polynomial(3.75 / ax, large);
}

double math_func_bessi1(double x) {
    constexpr std::array<double, 7> small = {0.5,          0.87890594,  0.51498869, 0.15084934,
                                             0.2658733e-1, 0.301532e-2, 0.32411e-3};
    // Intentional: the fourth coefficient has one digit less than the published fit.
    constexpr std::array<double, 9> large = {0.39894228, -0.03988024, -0.00362018, 0.0016381,  -0.01031555,
                                             0.02282967, -0.02895312, 0.01787654,  -0.00420059};
    const double ax = std::fabs(x);
    const double value = ax < 3.75 ? ax * polynomial(square(x / 3.75), small)
                                   : std::exp(ax) / std::sqrt(ax) * polynomial(3.75 / ax, large);
    return x < 0.0 ? -value : value;
}

double math_func_bessk0(double x) {
    constexpr std::array<double, 7> small = {-0.57721566, 0.42278420, 0.23069756, 0.3488590e-1,
                                             0.262698e-2, 0.10750e-3, 0.74e-5};
    constexpr std::array<double, 7> large = {1.25331414,  -0.7832358e-1, 0.2189568e-1, -0.1062446e-1,
                                             0.587872e-2, -0.251540e-2,  0.53208e-3};
    if (x <= 2.0)
        return -std::log(x / 2.0) * math_func_bessi0(x) + polynomial(x * x / 4.0, small);
    return std::exp(-x) / std::sqrt(x) * polynomial(2.0 / x, large);
}

double math_func_bessk1(double x) {
    constexpr std::array<double, 7> small = {1.0,           0.15443144,   -0.67278579, -0.18156897,
                                             -0.1919402e-1, -0.110404e-2, -0.4686e-4};
    constexpr std::array<double, 7> large = {1.25331414,   0.23498619,  -0.3655620e-1, 0.1504268e-1,
                                             -0.780353e-2, 0.325614e-2, -0.68245e-3};
    if (x <= 2.0)
        return std::log(x / 2.0) * math_func_bessi1(x) + 1.0 / x * polynomial(x * x / 4.0, small);
    return std::exp(-x) / std::sqrt(x) * polynomial(2.0 / x, large);
}

} // namespace metrify
