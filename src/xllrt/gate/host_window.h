#pragma once

// The host's main window, and message boxes in front of it.

#include <cstdint>
#include <string>

namespace metrify {

/// A window of the platform.
using WindowHandle = void*;

/// The window functions of the platform.
class WindowPlatform {
  public:
    virtual ~WindowPlatform() = default;

    /// The first top-level window of a class whose handle has these low 16 bits, or null.
    virtual WindowHandle FindWindowOfClass(const char* class_name, std::uint16_t low_bits) const = 0;

    /// Asks a question with Yes and No and a warning sign. True for Yes.
    virtual bool AskYesNo(WindowHandle owner, const std::u16string& text,
                          const std::u16string& title) const = 0;
};

/// The current platform.
const WindowPlatform& Windows();

/// Replaces the current platform; null restores that of the system.
void ReplaceWindows(const WindowPlatform* platform);

/// The platform of the system. Without windows none is found, and questions are asked by alerts of the host.
const WindowPlatform& SystemWindows();

/// The host's main window; null if the host does not report it, or has none.
WindowHandle GetHostWindow();

} // namespace metrify
