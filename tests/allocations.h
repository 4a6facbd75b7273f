#pragma once

// Counts allocations and lets one of them fail. The tests replace the global operator new.

#include <cstddef>

namespace metrify::test {

/// The allocations of this thread so far.
std::size_t allocations();

/// Lets the allocation after so many others of this thread fail, once. Negative: none fails.
void fail_allocation_after(std::ptrdiff_t others);

/// True if an allocation has failed since this thread's latest call of fail_allocation_after.
bool has_failed_allocation();

/// The number of blocks allocated minus the number of blocks released by this thread.
std::ptrdiff_t live_blocks();

} // namespace metrify::test
