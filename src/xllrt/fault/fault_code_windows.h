#pragma once

// Tells which exceptions of the operating system are faults of the called code.

#include <cstdint>

namespace metrify {

/// True for errors. False for C++ exceptions, which unwind the stack by themselves, and for what debuggers
/// and tracing raise.
inline bool IsFault(std::uint32_t code) {
    constexpr std::uint32_t kSeverity = 0xC0000000;
    constexpr std::uint32_t kCxxException = 0xE06D7363;
    return (code & kSeverity) == kSeverity && code != kCxxException;
}

} // namespace metrify
