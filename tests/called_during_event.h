#pragma once

// A function of the host that an observer in a module calls: the host acts while an event is handled.

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace metrify {

inline constexpr std::string_view kCallPrefix = "Call ";

/// The text that names a function.
inline std::string TextOfCall(void (*function)()) {
    return std::string(kCallPrefix) + std::to_string(reinterpret_cast<std::uintptr_t>(function));
}

/// Calls the function named by a text; does nothing for another text.
inline void CallFunctionIn(std::string_view text) {
    if (!text.starts_with(kCallPrefix))
        return;
    text.remove_prefix(kCallPrefix.size());
    std::uintptr_t address = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), address).ec == std::errc())
        reinterpret_cast<void (*)()>(address)();
}

} // namespace metrify
