#pragma once

// What the host does for each function number.

#include "host/host_state.h"

namespace metrify::host {

/// A return code of the host, and with code 0 a value.
struct HostAnswer {
    int code = xlretSuccess;
    CellValue value;
};

/// A call that the calling thread may not make.
inline constexpr int kRetNotThreadSafe = 128;

/// Carries out a function, with its options in its number. Refuses a number that is none, a wrong count of
/// arguments, and what the calling code's context does not permit.
HostAnswer CallHostFunction(HostState& state, int function, const std::vector<CellValue>& arguments,
                            CallContext context, bool is_wide);

} // namespace metrify::host
