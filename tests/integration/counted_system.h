#pragma once

// Counts the system's resources that a wizard hook uses: hooks, fonts, windows.

#include "host/state/fault_switch.h"
#include "tests/integration/replaced_call.h"

#include <set>
#include <string>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// Counts during its lifetime. Calls that create a resource also count as calls of the host, so fault
/// injection makes them fail.
class CountedSystem {
  public:
    explicit CountedSystem(FaultSwitch& faults);
    ~CountedSystem();
    CountedSystem(const CountedSystem&) = delete;
    CountedSystem& operator=(const CountedSystem&) = delete;

    /// Resources that have not been released.
    const std::set<HHOOK>& Hooks() const { return hooks_; }
    const std::set<HGDIOBJ>& Fonts() const { return fonts_; }
    /// The buttons and lists that still exist.
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
