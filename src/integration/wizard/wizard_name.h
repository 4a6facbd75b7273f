#pragma once

// The name of the function that the host's formula dialog shows, read as a screen reader does.

#include <optional>
#include <string>
#include <windows.h>

namespace metrify {

class WizardNameReader {
  public:
    /// The name; nothing if the dialog doesn't tell.
    std::optional<std::string> Read(HWND dialog);

  private:
    LONG child_ = 0; // where it was found the last time; 0 for nowhere
};

} // namespace metrify
