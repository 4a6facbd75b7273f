#pragma once

// The host's main window, and questions to the user in front of it.

#include <cstdint>
#include <string>

namespace metrify {

/// A window of the platform.
using WindowHandle = void*;

/// What the platform does about windows.
class WindowPlatform {
  public:
    virtual ~WindowPlatform() = default;

    /// The first top-level window of a class whose handle has these low 16 bits, or null.
    virtual WindowHandle FindWindowOfClass(const char* class_name, std::uint16_t low_bits) const = 0;

    /// Asks a question with Yes and No and a warning sign. True for Yes.
    virtual bool AskYesNo(WindowHandle owner, const std::u16string& text,
                          const std::u16string& title) const = 0;
};

/// The platform in force.
const WindowPlatform& Windows();

/// Makes another platform the one in force; null brings the system's own back.
void ReplaceWindows(const WindowPlatform* platform);

/// The system's own. Without windows none is found, and questions go to the user by the host's alerts.
const WindowPlatform& SystemWindows();

/// The host's main window; null if the host doesn't name it, or if it has none.
WindowHandle GetHostWindow();

} // namespace metrify
