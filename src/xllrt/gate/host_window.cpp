#include "xllrt/gate/host_window.h"

#include "xllrt/gate/host_primitives.h"
#include "xllrt/value/plain_answer.h"

namespace metrify {

namespace {

constexpr const char* kHostWindowClass = "XLMAIN";

constinit const WindowPlatform* replacement = nullptr;

} // namespace

const WindowPlatform& Windows() {
    return replacement ? *replacement : SystemWindows();
}

void ReplaceWindows(const WindowPlatform* platform) {
    replacement = platform;
}

WindowHandle GetHostWindow() {
    // In every version the host returns the low half of the handle.
    XLOPER answer{};
    if (Excel4(xlGetHwnd, &answer) != xlretSuccess)
        return nullptr;
    const std::optional<std::int32_t> low_half = TakeInteger(answer);
    return low_half ? Windows().FindWindowOfClass(kHostWindowClass, static_cast<std::uint16_t>(*low_half))
                    : nullptr;
}

} // namespace metrify
