#pragma once

// The drawing that the system offers, written down instead of done.

#include "host/state/fault_switch.h"
#include "tests/integration/replaced_call.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// As long as this lives there is a theme of the test's own, and each call of its functions and of the
/// classic ones beside them becomes a line: the function, the class of the theme, what it was given.
class RecordedTheme {
  public:
    RecordedTheme();
    ~RecordedTheme();
    RecordedTheme(const RecordedTheme&) = delete;
    RecordedTheme& operator=(const RecordedTheme&) = delete;

    /// The lines since the last time.
    std::vector<std::string> Lines() { return std::exchange(lines_, {}); }
    /// Those of opening and closing among them; the others are dropped.
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
    /// Functions that fail; an opening by the line that it makes.
    std::set<std::string> refused;
    /// Fails calls too, if it is there.
    FaultSwitch* faults = nullptr;

  private:
    struct Functions;

    // Writes a call down. Gives whether it works.
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
