#include "numerics/special/jacobi.h"

#include "numerics/special/hyperbolic.h"
#include "numerics/special/trigonometry.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace metrify {

namespace {

/// The arithmetic and geometric means of Gauss's transformations.
struct means {
    static constexpr std::size_t most = 13;
    std::array<double, most> arithmetic, geometric;
    std::size_t count;
    double last; // arithmetic
};

means descend(double emc) {
    constexpr double CA = 0.0003;
    means m = {};
    double a = 1.0;
    while (m.count < means::most) {
        m.arithmetic[m.count] = a;
        emc = std::sqrt(emc);
        m.geometric[m.count] = emc;
        ++m.count;
        m.last = 0.5 * (a + emc);
        if (std::fabs(a - emc) <= CA * a)
            break;
        emc *= a;
        a = m.last;
    }
    return m;
}

struct jacobi_values {
    double sn, cn, dn;
};

/// For a complementary parameter that isn't 0.
jacobi_values by_transformations(double u, double emc) {
    const means m = descend(emc);
    double c = m.last;
    jacobi_values f = {sine(u * c), cosine(u * c), 1.0};
    if (f.sn == 0.0)
        return f;
    double a = f.cn / f.sn;
    c *= a;
    for (std::size_t i = m.count; i > 0; --i) {
        const double b = m.arithmetic[i - 1];
        a *= c;
        c *= f.dn;
        f.dn = (m.geometric[i - 1] + a) / (b + a);
        a = c / b;
    }
    const double magnitude = 1.0 / std::sqrt(c * c + 1.0);
    f.sn = f.sn >= 0.0 ? magnitude : -magnitude;
    f.cn = c * f.sn;
    return f;
}

} // namespace

void math_func_sncndn(double u, double emmc, double& sn, double& cn, double& dn, text_str*&) {
    if (emmc == 0.0) {
        cn = dn = 1.0 / hyperbolic_cosine(u);
        sn = hyperbolic_tangent(u);
        return;
    }
    if (emmc < 0.0) {
        const double d = 1.0 - emmc;
        const double root = std::sqrt(d);
        const jacobi_values f = by_transformations(u * root, emmc / (-1.0 / d));
        sn = f.sn / root;
        cn = f.dn;
        dn = f.cn;
        return;
    }
    const jacobi_values f = by_transformations(u, emmc);
    sn = f.sn;
    cn = f.cn;
    dn = f.dn;
}

} // namespace metrify
