#pragma once

// How often the program has asked for memory. The tests replace the global operator new by one that counts.

#include <cstddef>

namespace metrify::test {

/// The allocations of this thread so far.
std::size_t allocations();

} // namespace metrify::test
