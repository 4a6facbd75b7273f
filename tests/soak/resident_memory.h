#pragma once

// The memory of this process.

#include <cstddef>

namespace metrify_soak {

/// The bytes of this process that are in memory.
std::size_t ResidentMemory();

} // namespace metrify_soak
