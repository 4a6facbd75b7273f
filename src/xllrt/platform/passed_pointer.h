#pragma once

// Pointers on their way through the system, whose messages and enumerations pass numbers alone.

#include <cstdint>

namespace metrify {

/// The pointer that was passed as a number.
template <class Pointer>
Pointer PassedPointer(std::intptr_t number) {
    // The system passes no pointers.
    return reinterpret_cast<Pointer>(number); // NOLINT(performance-no-int-to-ptr)
}

} // namespace metrify
