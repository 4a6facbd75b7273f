#pragma once

// How often the program has asked for memory. The tests replace the global operator new by one that counts.

#include <cstddef>

namespace metrify::test {

/// The allocations of this thread so far.
std::size_t allocations();

/// How many of them are not released yet, blocks released by this thread for another one taken off.
std::ptrdiff_t live_blocks();

} // namespace metrify::test
