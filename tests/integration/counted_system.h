#pragma once

// What the system gives out to a wizard hook and has to get back: hooks, fonts, windows.

#include "host/state/fault_switch.h"
#include "tests/integration/replaced_call.h"

#include <set>
#include <string>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// As long as this lives it keeps the account, and calls that give something out are the host's calls too:
/// they fail with them.
class CountedSystem {
  public:
    explicit CountedSystem(FaultSwitch& faults);
    ~CountedSystem();
    CountedSystem(const CountedSystem&) = delete;
    CountedSystem& operator=(const CountedSystem&) = delete;

    /// What has not been given back.
    const std::set<HHOOK>& Hooks() const { return hooks_; }
    const std::set<HGDIOBJ>& Fonts() const { return fonts_; }
    /// The buttons and lists that still stand.
    std::vector<HWND> Controls() const;

  private:
    struct Functions;

    FaultSwitch& faults_;
    std::set<HHOOK> hooks_;
    std::set<HGDIOBJ> fonts_;
    std::set<HWND> controls_;

    ReplacedPointer hook_;
    ReplacedPointer unhook_;
    ReplacedPointer make_font_;
    ReplacedPointer delete_;
    ReplacedPointer make_window_;
};

} // namespace metrify::host
