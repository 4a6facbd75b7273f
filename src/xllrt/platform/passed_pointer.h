#pragma once

// Pointers passed through the system, whose messages and enumerations carry integers only.

#include <cstdint>

namespace metrify {

/// The pointer that was passed as a number.
template <class Pointer>
Pointer PassedPointer(std::intptr_t number) {
    // The parameter of the system's callbacks is an integer.
    return reinterpret_cast<Pointer>(number); // NOLINT(performance-no-int-to-ptr)
}

} // namespace metrify
