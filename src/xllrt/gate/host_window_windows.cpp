#include "xllrt/gate/host_window.h"
#include "xllrt/platform/passed_pointer.h"

#include <array>
#include <string_view>
#include <windows.h>

namespace metrify {

namespace {

struct WindowSearch {
    std::string_view class_name;
    std::uint16_t low_bits;
    HWND found;
};

// Stops the enumeration at the first match.
BOOL CALLBACK LookAtWindow(HWND window, LPARAM context) {
    auto& search = *PassedPointer<WindowSearch*>(context);
    std::array<char, 64> class_name{};
    GetClassNameA(window, class_name.data(), static_cast<int>(class_name.size()));
    const auto low_bits = static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(window));
    if (low_bits != search.low_bits || class_name.data() != search.class_name)
        return TRUE;
    search.found = window;
    return FALSE;
}

class RealWindows final : public WindowPlatform {
  public:
    WindowHandle FindWindowOfClass(const char* class_name, std::uint16_t low_bits) const override {
        WindowSearch search{class_name, low_bits, nullptr};
        EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }

    bool AskYesNo(WindowHandle owner, const std::u16string& text,
                  const std::u16string& title) const override {
        const auto wide = [](const std::u16string& any) {
            return reinterpret_cast<const wchar_t*>(any.c_str());
        };
        constexpr UINT kYesNoWarning = MB_YESNO | MB_ICONEXCLAMATION;
        static_assert(kYesNoWarning == 52);
        return MessageBoxW(static_cast<HWND>(owner), wide(text), wide(title), kYesNoWarning) == IDYES;
    }
};

} // namespace

const WindowPlatform& SystemWindows() {
    static const RealWindows windows;
    return windows;
}

} // namespace metrify
