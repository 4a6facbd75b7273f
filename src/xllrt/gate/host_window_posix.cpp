#include "xllrt/gate/host_alert.h"
#include "xllrt/gate/host_window.h"

namespace metrify {

namespace {

class NoWindows final : public WindowPlatform {
  public:
    WindowHandle FindWindowOfClass(const char* /*class_name*/, std::uint16_t /*low_bits*/) const override {
        return nullptr;
    }

    bool AskYesNo(WindowHandle /*owner*/, const std::u16string& text,
                  const std::u16string& title) const override {
        return Alert(title + u"\n" + text, kAlertQuestion);
    }
};

} // namespace

const WindowPlatform& SystemWindows() {
    static const NoWindows none;
    return none;
}

} // namespace metrify
