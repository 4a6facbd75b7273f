#pragma once

// The arguments for measurements of the special functions: three typical ones for each routine, the same for
// all libraries.

#include <array>
#include <benchmark/benchmark.h>
#include <sstream>
#include <string>
#include <string_view>

namespace metrify::bench {

using special_arguments = std::array<double, 4>;

struct special_point {
    std::string_view routine; // without the common prefix
    special_arguments x;
};

// clang-format off
inline constexpr special_point special_points[] = {
    {"bessj0", {1.0}}, {"bessj0", {6.0}}, {"bessj0", {50.0}},
    {"bessj1", {1.0}}, {"bessj1", {6.0}}, {"bessj1", {50.0}},
    {"bessy0", {1.0}}, {"bessy0", {6.0}}, {"bessy0", {50.0}},
    {"bessy1", {1.0}}, {"bessy1", {6.0}}, {"bessy1", {50.0}},
    {"bessi0", {1.0}}, {"bessi0", {6.0}}, {"bessi0", {50.0}},
    {"bessi1", {1.0}}, {"bessi1", {6.0}}, {"bessi1", {50.0}},
    {"bessk0", {1.0}}, {"bessk0", {6.0}}, {"bessk0", {50.0}},
    {"bessk1", {1.0}}, {"bessk1", {6.0}}, {"bessk1", {50.0}},
    {"bessj", {3, 1.0}}, {"bessj", {10, 6.0}}, {"bessj", {10, 50.0}},
    {"bessy", {3, 1.0}}, {"bessy", {10, 6.0}}, {"bessy", {10, 50.0}},
    {"bessi", {3, 1.0}}, {"bessi", {10, 6.0}}, {"bessi", {10, 20.0}},
    {"bessk", {3, 1.0}}, {"bessk", {10, 6.0}}, {"bessk", {10, 50.0}},
    {"bessj_frac", {0.5, 1.0}}, {"bessj_frac", {2.5, 6.0}}, {"bessj_frac", {10.3, 50.0}},
    {"bessy_frac", {0.5, 1.0}}, {"bessy_frac", {2.5, 6.0}}, {"bessy_frac", {10.3, 50.0}},
    {"bessi_frac", {0.5, 1.0}}, {"bessi_frac", {2.5, 6.0}}, {"bessi_frac", {10.3, 50.0}},
    {"bessk_frac", {0.5, 1.0}}, {"bessk_frac", {2.5, 6.0}}, {"bessk_frac", {10.3, 50.0}},
    {"airy", {-5.0}}, {"airy", {0.5}}, {"airy", {5.0}},
    {"gammln", {0.5}}, {"gammln", {5.0}}, {"gammln", {100.0}},
    {"gammp", {0.5, 0.3}}, {"gammp", {5.0, 4.0}}, {"gammp", {5.0, 20.0}},
    {"gammq", {0.5, 0.3}}, {"gammq", {5.0, 4.0}}, {"gammq", {5.0, 20.0}},
    {"beta", {0.5, 0.5}}, {"beta", {2.0, 3.0}}, {"beta", {20.0, 30.0}},
    {"betai", {0.5, 0.5, 0.3}}, {"betai", {2.0, 3.0, 0.4}}, {"betai", {20.0, 30.0, 0.5}},
    {"erf", {0.3}}, {"erf", {1.0}}, {"erf", {3.0}},
    {"erfc", {0.3}}, {"erfc", {1.0}}, {"erfc", {3.0}},
    {"expint", {1, 0.3}}, {"expint", {1, 2.0}}, {"expint", {3, 10.0}},
    {"ei", {0.5}}, {"ei", {5.0}}, {"ei", {30.0}},
    {"dawson", {0.1}}, {"dawson", {1.0}}, {"dawson", {10.0}},
    {"CumNormal", {0.5}}, {"CumNormal", {2.5}}, {"CumNormal", {-4.0}},
    {"CumNormalInv", {0.6}}, {"CumNormalInv", {0.975}}, {"CumNormalInv", {1e-6}},
    {"carlsons_rc", {1.0, 2.0}}, {"carlsons_rc", {0.1, 5.0}}, {"carlsons_rc", {30.0, 0.5}},
    {"carlsons_rd", {1.0, 2.0, 3.0}}, {"carlsons_rd", {0.1, 5.0, 1.0}}, {"carlsons_rd", {0.0, 2.0, 1.0}},
    {"carlsons_rf", {1.0, 2.0, 3.0}}, {"carlsons_rf", {0.1, 5.0, 1.0}}, {"carlsons_rf", {0.0, 2.0, 1.0}},
    {"carlsons_rj", {1.0, 2.0, 3.0, 4.0}}, {"carlsons_rj", {0.1, 5.0, 1.0, 2.0}}, {"carlsons_rj", {0.0, 2.0, 1.0, 3.0}},
    {"elliptic_f", {0.3, 0.5}}, {"elliptic_f", {1.0, 0.9}}, {"elliptic_f", {1.5, 0.99}},
    {"elliptic_e", {0.3, 0.5}}, {"elliptic_e", {1.0, 0.9}}, {"elliptic_e", {1.5, 0.99}},
    {"elliptic_pi", {0.3, 0.2, 0.5}}, {"elliptic_pi", {1.0, 0.5, 0.9}}, {"elliptic_pi", {1.5, 2.0, 0.99}},
    {"sncndn", {0.5, 0.25}}, {"sncndn", {2.0, 0.81}}, {"sncndn", {10.0, 0.01}},
};
// clang-format on

/// special/ROUTINE(ARGUMENTS)/MAKER
inline std::string benchmark_name(const special_point& point, std::size_t arguments, std::string_view maker) {
    std::ostringstream name;
    name << "special/" << point.routine << '(';
    for (std::size_t i = 0; i < arguments; ++i)
        name << (i > 0 ? "," : "") << point.x[i];
    name << ")/" << maker;
    return name.str();
}

/// Measures call(x), which gives a number, at every point of the routine.
template <class Call>
void measure(std::string_view routine, std::size_t arguments, std::string_view maker, Call call) {
    for (const special_point& point : special_points) {
        if (point.routine != routine)
            continue;
        benchmark::RegisterBenchmark(benchmark_name(point, arguments, maker).c_str(),
                                     [&point, call](benchmark::State& state) {
                                         special_arguments x = point.x;
                                         for (auto _ : state) {
                                             benchmark::DoNotOptimize(x);
                                             benchmark::DoNotOptimize(call(x));
                                         }
                                     });
    }
}

} // namespace metrify::bench
