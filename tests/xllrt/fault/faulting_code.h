#pragma once

// Code that faults, and guarded calls of it.

#include "xllrt/fault/guarded_call.h"

#include <cstdint>

namespace metrify::faulting {

// Values that the compiler must not know.
inline constexpr std::uintptr_t kUnmappedAddress = 64;
inline volatile std::uintptr_t unmapped_address = kUnmappedAddress;
inline volatile int zero = 0;

inline void TouchNothing() {
    *reinterpret_cast<volatile int*>(unmapped_address) = 1;
}

inline void DivideByZero() {
    volatile int number = 1;
    number = number / zero;
}

template <class Body>
std::uint32_t Guarded(Body body) {
    return CallGuarded([](void* context) { (*static_cast<Body*>(context))(); }, &body);
}

} // namespace metrify::faulting
