#pragma once

namespace metrify_bench {

/// Makes the compiler forget the number. benchmark::DoNotOptimize loses its value: it gives GCC a choice of
/// two places, and GCC reads the one that was not written.
inline void hide(double& number) {
    asm volatile("" : "+m"(number) : : "memory");
}

} // namespace metrify_bench
