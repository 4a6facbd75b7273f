// The special functions, compared with the C++ standard library where it has them.

#include "bench/special_points.h"
#include "tests/numerics/routines.h"

#include <cmath>

namespace {

using namespace metrify;
using bench::measure;
using bench::special_arguments;

void measure_ours() {
    constexpr std::string_view prefix = "math_func_";
    for (const test::routine& routine : test::all_routines()) {
        measure(
            routine.name.substr(prefix.size()), routine.arguments, "metrify",
            [call = routine.call](const special_arguments& x) {
                work_text err;
                return call(x, err.str)[0];
            });
    }
}

template <class Call>
void measure_std(std::string_view routine, std::size_t arguments, Call call) {
    measure(routine, arguments, "std", call);
}

void measure_standard_library() {
    measure_std(
        "gammln", 1, [](const special_arguments& x) { return std::lgamma(x[0]); });
    measure_std(
        "beta", 2, [](const special_arguments& x) { return std::beta(x[0], x[1]); });
    measure_std(
        "erf", 1, [](const special_arguments& x) { return std::erf(x[0]); });
    measure_std(
        "erfc", 1, [](const special_arguments& x) { return std::erfc(x[0]); });
    measure_std(
        "ei", 1, [](const special_arguments& x) { return std::expint(x[0]); });
    measure_std(
        "bessj_frac", 2, [](const special_arguments& x) { return std::cyl_bessel_j(x[0], x[1]); });
    measure_std(
        "bessy_frac", 2, [](const special_arguments& x) { return std::cyl_neumann(x[0], x[1]); });
    measure_std(
        "bessi_frac", 2, [](const special_arguments& x) { return std::cyl_bessel_i(x[0], x[1]); });
    measure_std(
        "bessk_frac", 2, [](const special_arguments& x) { return std::cyl_bessel_k(x[0], x[1]); });
    measure_std(
        "elliptic_f", 2, [](const special_arguments& x) { return std::ellint_1(x[1], x[0]); });
    measure_std("elliptic_e", 2, [](const special_arguments& x) { return std::ellint_2(x[1], x[0]); });
}

const bool registered = [] {
    measure_ours();
    measure_standard_library();
    return true;
}();

} // namespace
