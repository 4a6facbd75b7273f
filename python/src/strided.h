#pragma once

// The order in which the numbers of an array of any shape are visited.

#include <cstddef>
#include <functional>
#include <vector>

namespace metrify_python {

/// A dimension of two arrays of the same shape, with their strides in bytes.
struct axis {
    std::ptrdiff_t length;
    std::ptrdiff_t from_stride;
    std::ptrdiff_t to_stride;
};

/// The axes that a loop needs, the innermost last: those of length 1 are dropped, and two that are traversed
/// like one are joined. The innermost axis is the one with the smallest step in the result.
std::vector<axis> simplified(std::vector<axis> axes);

/// Calls `row(from, to)` with the offsets in bytes of each innermost row. The axes are simplified and not
/// empty.
void for_each_row(const std::vector<axis>& axes,
                  const std::function<void(std::ptrdiff_t, std::ptrdiff_t)>& row);

} // namespace metrify_python
