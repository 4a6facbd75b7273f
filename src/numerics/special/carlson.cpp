#include "numerics/special/carlson.h"

#include "base/failure.h"
#include "numerics/scalar_helpers.h"
#include "numerics/special/polynomial.h"

#include <array>
#include <cmath>

namespace metrify {

namespace {

constexpr double THIRD = 1.0 / 3.0;

/// The three arguments of all forms but RC, in the iteration by the duplication theorem.
struct triple {
    double x, y, z;

    /// What a duplication adds to each argument.
    double lambda() const {
        const double root_x = std::sqrt(x);
        const double root_y = std::sqrt(y);
        const double root_z = std::sqrt(z);
        return root_x * (root_y + root_z) + root_y * root_z;
    }
    void duplicate(double lambda) {
        x = 0.25 * (x + lambda);
        y = 0.25 * (y + lambda);
        z = 0.25 * (z + lambda);
    }
    /// The arguments' distances from their mean, relative to it.
    triple distances(double mean) const { return {(mean - x) / mean, (mean - y) / mean, (mean - z) / mean}; }
    double largest_magnitude() const { return larger(larger(std::fabs(x), std::fabs(y)), std::fabs(z)); }
    double smallest() const { return smaller(smaller(x, y), z); }
    double largest() const { return larger(larger(x, y), z); }
};

} // namespace

double math_func_carlsons_rc(double x, double y, text_str*& err) {
    constexpr double ERRTOL = 0.0012;
    constexpr double TINY = 1.69e-38;
    constexpr double BIG = 3e37;
    if (x < 0.0)
        return numeric_failure(err, "ERROR:  x must be >= 0 in routine math_func_carlsons_rc().\n");
    if (y == 0.0)
        return numeric_failure(err, "ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n");
    if (x + std::fabs(y) < TINY)
        return numeric_failure(err, "ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n");
    if (x + std::fabs(y) > BIG)
        return numeric_failure(err, "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n");
    if (y < -1.72e19 && x > 0.0 && x < 0.010281960000000001)
        return numeric_failure(err, "ERROR:  bad arg range in routine math_func_carlsons_rc().\n");
    double xt = x;
    double yt = y;
    double w = 1.0;
    if (!(y > 0.0)) {
        xt = x - y;
        yt = -y;
        w = std::sqrt(x) / std::sqrt(y); // intentional: of y itself, a not-a-number for y < 0
    }
    double mean = 0.0;
    double s = 0.0;
    do {
        const double lambda = 2.0 * std::sqrt(xt) * std::sqrt(yt) + yt;
        xt = 0.25 * (xt + lambda);
        yt = 0.25 * (yt + lambda);
        mean = THIRD * (xt + yt + yt);
        s = (yt - mean) / mean;
    } while (std::fabs(s) > ERRTOL);
    // Intentional: the series of the integral begins with 1.
    const double series = polynomial(s, std::array{0.3, 1.0 / 7.0, 0.375, 9.0 / 22.0});
    return w * (12.0 + s * s * series) / std::sqrt(mean);
}

double math_func_carlsons_rd(double x, double y, double z, text_str*& err) {
    constexpr double ERRTOL = 0.0015;
    constexpr double TINY = 1e-25;
    constexpr double BIG = 4.5e21;
    constexpr double C1 = 3.0 / 14.0;
    constexpr double C2 = 1.0 / 6.0;
    constexpr double C3 = 9.0 / 22.0;
    constexpr double C4 = 3.0 / 26.0;
    constexpr double C5 = 0.25 * C3;
    constexpr double C6 = 1.5 * C4;
    if (smaller(x, y) < 0.0)
        return numeric_failure(err, "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n");
    if (smaller(x + y, z) < TINY)
        return numeric_failure(err, "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n");
    triple t = {x, y, z};
    if (t.largest() > BIG)
        return numeric_failure(err, "ERROR:  x, y, z too big in routine math_func_carlsons_rd().\n");
    double sum = 0.0;
    double fac = 1.0;
    double mean = 0.0;
    triple d = {};
    do {
        const double lambda = t.lambda();
        sum += fac / (std::sqrt(t.z) * (t.z + lambda));
        fac = 0.25 * fac;
        t.duplicate(lambda);
        mean = 0.2 * (t.x + t.y + 3.0 * t.z);
        d = t.distances(mean);
    } while (d.largest_magnitude() > ERRTOL);
    const double ea = d.x * d.y;
    const double eb = d.z * d.z;
    const double ec = ea - eb;
    const double ed = ea - 6.0 * eb;
    const double ee = ed + ec + ec;
    const double series =
        1.0 + ed * (-C1 + C5 * ed - C6 * d.z * ee) + d.z * (C2 * ee + d.z * (-C3 * ec + d.z * C4 * ea));
    return 3.0 * sum + fac * series / (mean * std::sqrt(mean));
}

double math_func_carlsons_rf(double x, double y, double z, text_str*& err) {
    constexpr double ERRTOL = 0.0025;
    constexpr double TINY = 1.5e-38;
    constexpr double BIG = 3e37;
    constexpr double C1 = 1.0 / 24.0;
    constexpr double C2 = 0.1;
    constexpr double C3 = 3.0 / 44.0;
    constexpr double C4 = 1.0 / 14.0;
    triple t = {x, y, z};
    if (t.smallest() < 0.0)
        return numeric_failure(err, "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n");
    if (triple{x + y, x + z, y + z}.smallest() < TINY)
        return numeric_failure(err, "ERROR:  x or y or z too small in routine math_func_carlsons_rf().\n");
    if (t.largest() > BIG)
        return numeric_failure(err, "ERROR:  x or y or z too big in routine math_func_carlsons_rf().\n");
    double mean = 0.0;
    triple d = {};
    do {
        t.duplicate(t.lambda());
        mean = THIRD * (t.x + t.y + t.z);
        d = t.distances(mean);
    } while (d.largest_magnitude() > ERRTOL);
    const double e2 = d.x * d.y - d.z * d.z;
    const double e3 = d.x * d.y * d.z;
    return (1.0 + (C1 * e2 - C2 - C3 * e3) * e2 + C4 * e3) / std::sqrt(mean);
}

namespace {

/// RJ for a p that isn't negative. Leaves t as after the last iteration.
double rj_series(triple& t, double p, text_str*& err) {
    constexpr double ERRTOL = 0.0015;
    constexpr double C1 = 3.0 / 14.0;
    constexpr double C2 = THIRD;
    constexpr double C3 = 3.0 / 22.0;
    constexpr double C4 = 3.0 / 26.0;
    constexpr double C5 = 0.75 * C3;
    constexpr double C6 = 1.5 * C4;
    constexpr double C7 = 1.0 / 6.0;
    constexpr double C8 = 3.0 / 11.0;
    double sum = 0.0;
    double fac = 1.0;
    double mean = 0.0;
    double dp = 0.0;
    triple d = {};
    do {
        const double root_x = std::sqrt(t.x);
        const double root_y = std::sqrt(t.y);
        const double root_z = std::sqrt(t.z);
        const double lambda = t.lambda();
        const double alpha = square(p * (root_x + root_y + root_z) + root_x * root_y * root_z);
        const double beta = p * square(p + lambda);
        sum += fac * math_func_carlsons_rc(alpha, beta, err);
        fac = 0.25 * fac;
        t.duplicate(lambda);
        p = 0.25 * (p + lambda);
        mean = 0.2 * (t.x + t.y + t.z + p + p);
        d = t.distances(mean);
        dp = (mean - p) / mean;
    } while (larger(d.largest_magnitude(), std::fabs(dp)) > ERRTOL);
    const double ea = d.x * (d.y + d.z) + d.y * d.z;
    const double eb = d.x * d.y * d.z;
    const double ec = dp * dp;
    const double ed = ea - 3.0 * ec;
    const double ee = eb + 2.0 * dp * (ea - ec);
    const double series = 1.0 + ed * (-C1 + C5 * ed - C6 * ee) + eb * (C7 + dp * (-C8 + dp * C4)) +
                          dp * ea * (C2 - dp * C3) - C2 * dp * ec;
    return 3.0 * sum + fac * series / (mean * std::sqrt(mean));
}

/// RJ for a p that isn't positive, by Carlson's transformation.
double rj_reduced(const triple& given, double p, text_str*& err) {
    const double least = given.smallest();
    const double greatest = given.largest();
    triple t = {least, given.x + given.y + given.z - least - greatest, greatest};
    const double a = 1.0 / (t.y - p);
    const double b = a * (t.z - t.y) * (t.y - t.x);
    const double rho = t.x * t.z / t.y;
    const double tau = p * (t.y + b) / t.y;
    const double rc = math_func_carlsons_rc(rho, tau, err);
    const double rj = rj_series(t, t.y + b, err);
    return a * (b * rj + 3.0 * (rc - math_func_carlsons_rf(t.x, t.y, t.z, err)));
}

} // namespace

double math_func_carlsons_rj(double x, double y, double z, double p, text_str*& err) {
    constexpr double TINY = 2.5e-13;
    constexpr double BIG = 9e11;
    triple t = {x, y, z};
    if (t.smallest() < 0.0)
        return numeric_failure(err, "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n");
    if (smaller(y + z, std::fabs(p)) < TINY || larger(z, std::fabs(p)) > BIG)
        return numeric_failure(err, "ERROR:  arg error in routine math_func_carlsons_rj().\n");
    return p > 0.0 ? rj_series(t, p, err) : rj_reduced(t, p, err);
}

} // namespace metrify
