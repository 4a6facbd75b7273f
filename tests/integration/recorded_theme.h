#pragma once

// Records the drawing calls of the system instead of executing them.

#include "host/state/fault_switch.h"
#include "tests/integration/replaced_call.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// During its lifetime the system has a theme of the test, and each call of a theme function or a classic
/// drawing function is recorded as a line: the function, the class of the theme, the arguments.
class RecordedTheme {
  public:
    RecordedTheme();
    ~RecordedTheme();
    RecordedTheme(const RecordedTheme&) = delete;
    RecordedTheme& operator=(const RecordedTheme&) = delete;

    /// The lines since the last call.
    std::vector<std::string> Lines() { return std::exchange(lines_, {}); }
    /// Those of opening and closing only; the others are dropped.
    std::vector<std::string> Openings();
    /// The windows that themes were opened for.
    const std::set<HWND>& Windows() const { return windows_; }

    /// Themes that have not been closed.
    std::size_t OpenCount() const { return open_.size(); }

    bool hasLibrary = true;
    /// The path by which the library was loaded last.
    std::string libraryPath;
    /// Functions that the library lacks.
    std::set<std::string> missing;
    /// Functions that fail; an opening is named by the line that it records.
    std::set<std::string> refused;
    /// Makes calls fail too; may be null.
    FaultSwitch* faults = nullptr;

  private:
    struct Functions;

    // Records a call. Returns whether it succeeds.
    bool Note(const std::string& function, const std::string& given);
    std::string ClassOf(HANDLE theme) const;

    std::vector<std::string> lines_;
    std::set<HWND> windows_;
    std::map<HANDLE, std::string> open_;
    std::uintptr_t last_theme_ = 0;

    ReplacedPointer load_;
    ReplacedPointer find_;
    ReplacedPointer frame_;
    ReplacedPointer text_;
};

} // namespace metrify::host
