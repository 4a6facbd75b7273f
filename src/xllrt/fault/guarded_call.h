#pragma once

// Calls code whose faults must not end the process.

#include <cstdint>

namespace metrify {

/// Calls `body(context)`. Returns 0, or the operating system's code of the fault that ended it: an access
/// violation, a division by zero, a stack overflow or another fault. C++ exceptions pass through.
///
/// Guards nest, separately in each thread. A fault is handled by the innermost open guard of its thread;
/// without one it is handled as if this code did not exist. Objects on the stack of the interrupted call are
/// abandoned, not destroyed: after a fault no destructor has run.
std::uint32_t CallGuarded(void (*body)(void*), void* context);

// Codes of faults, those of Windows on all platforms. An overflow of a division has the code of a division by
// zero where the system does not distinguish the two.
inline constexpr std::uint32_t kFaultAccessViolation = 0xC0000005;
inline constexpr std::uint32_t kFaultInPageError = 0xC0000006;
inline constexpr std::uint32_t kFaultIllegalInstruction = 0xC000001D;
inline constexpr std::uint32_t kFaultFloatDivideByZero = 0xC000008E;
inline constexpr std::uint32_t kFaultFloatInexact = 0xC000008F;
inline constexpr std::uint32_t kFaultFloatInvalid = 0xC0000090;
inline constexpr std::uint32_t kFaultFloatOverflow = 0xC0000091;
inline constexpr std::uint32_t kFaultFloatUnderflow = 0xC0000093;
inline constexpr std::uint32_t kFaultIntegerDivideByZero = 0xC0000094;
inline constexpr std::uint32_t kFaultIntegerOverflow = 0xC0000095;
inline constexpr std::uint32_t kFaultStackOverflow = 0xC00000FD;

} // namespace metrify
