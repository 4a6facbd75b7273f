#pragma once

// Callbacks from the host or from the system, which must not throw.

namespace metrify {

/// Calls and catches all exceptions. After an exception the result is value-initialised.
template <class Call>
auto Guarded(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return decltype(call())();
    }
}

} // namespace metrify
