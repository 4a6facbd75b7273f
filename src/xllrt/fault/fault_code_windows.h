#pragma once

// Which exceptions of the operating system are faults of the called code.

#include <cstdint>

namespace metrify {

/// True for errors. Not for exceptions of the language, which have their own way through the stack, nor for
/// what debuggers and tracing raise.
inline bool IsFault(std::uint32_t code) {
    constexpr std::uint32_t kSeverity = 0xC0000000;
    constexpr std::uint32_t kCxxException = 0xE06D7363;
    return (code & kSeverity) == kSeverity && code != kCxxException;
}

} // namespace metrify
