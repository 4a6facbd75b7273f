#pragma once

// Counts allocations. The tests replace the global operator new by one that counts.

#include <cstddef>

namespace metrify::test {

/// The allocations of this thread so far.
std::size_t allocations();

/// The number of blocks allocated minus the number of blocks released by this thread.
std::ptrdiff_t live_blocks();

} // namespace metrify::test
