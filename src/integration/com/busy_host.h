#pragma once

// Retries calls of a host that is busy with a dialog or with editing a cell.

#include <array>
#include <cstdint>
#include <windows.h>

namespace metrify {

/// True if a call was rejected because the host is busy; a retry may succeed.
inline bool IsHostBusy(HRESULT code) {
    constexpr std::array<std::uint32_t, 3> kBusyCodes = {0x80010001, 0x8001010A, 0x800AC472};
    for (const std::uint32_t busy : kBusyCodes)
        if (static_cast<std::uint32_t>(code) == busy)
            return true;
    return false;
}

/// Retries while the host is busy, for half a second at most. Returns the code of the last call.
template <class Call>
HRESULT CallBusyHost(Call call) {
    constexpr int kAttempts = 11;
    constexpr DWORD kPause = 50; // milliseconds
    HRESULT code = call();
    for (int attempt = 1; attempt < kAttempts && IsHostBusy(code); ++attempt) {
        Sleep(kPause);
        code = call();
    }
    return code;
}

} // namespace metrify
