#pragma once

// The name of the function that the host's formula dialog shows, read as a screen reader does.

#include <optional>
#include <string>
#include <windows.h>

namespace metrify {

class WizardNameReader {
  public:
    /// The name, if the dialog has one.
    std::optional<std::string> Read(HWND dialog);

  private:
    LONG child_ = 0; // the child found last; 0 for none
};

} // namespace metrify
