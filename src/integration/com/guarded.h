#pragma once

// What is called by the host or by the system, which know nothing of exceptions.

namespace metrify {

/// Calls something. What it throws ends here; the value is then an empty one.
template <class Call>
auto Guarded(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return decltype(call())();
    }
}

} // namespace metrify
