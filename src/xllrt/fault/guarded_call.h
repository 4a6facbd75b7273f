#pragma once

// Calling code whose faults must not end the process.

#include <cstdint>

namespace metrify {

/// Calls `body(context)`. Gives 0, or the operating system's code of the fault that broke it off: an access
/// violation, a division by zero, an exhausted stack and the like. Exceptions of the language pass through.
///
/// Guards nest, in every thread of its own. A fault goes to the innermost guard of its thread that is still
/// open; without one it goes where it would have gone without any of this. What the broken call had on the
/// stack is abandoned, not destroyed: no destructor may be relied on behind a fault.
std::uint32_t CallGuarded(void (*body)(void*), void* context);

// Codes of faults. They are those of Windows everywhere. A quotient that is too large has the code of a
// division by zero where the system doesn't tell the two apart.
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
