#include "numerics/special/elliptic.h"

#include "numerics/scalar_helpers.h"
#include "numerics/special/carlson.h"
#include "numerics/special/trigonometry.h"

namespace metrify {

namespace {

struct amplitude {
    amplitude(double phi, double k)
        : s(sine(phi)), sk(s * k), cc(square(cosine(phi))), q((1.0 - sk) * (1.0 + sk)) {}

    double s, sk, cc, q;
};

} // namespace

double math_func_elliptic_f(double phi, double k, text_str*& err) {
    const amplitude a(phi, k);
    return a.s * math_func_carlsons_rf(a.cc, a.q, 1.0, err);
}

double math_func_elliptic_e(double phi, double k, text_str*& err) {
    const amplitude a(phi, k);
    const double rf = math_func_carlsons_rf(a.cc, a.q, 1.0, err);
    return a.s * (rf - square(a.sk) * math_func_carlsons_rd(a.cc, a.q, 1.0, err) / 3.0);
}

double math_func_elliptic_pi(double phi, double n, double k, text_str*& err) {
    const amplitude a(phi, k);
    const double e = n * a.s * a.s;
    const double rf = math_func_carlsons_rf(a.cc, a.q, 1.0, err);
    return a.s * (rf - e * math_func_carlsons_rj(a.cc, a.q, 1.0, 1.0 + e, err) / 3.0);
}

} // namespace metrify
