#pragma once

// The host's place in the running object table: itself, and each open workbook.

#include "integration/com/com_ptr.h"

#include <oaidl.h>
#include <string>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// Makes the host's names known to the system, as its installation does, and forgets them again.
void RegisterProgramNames();
void UnregisterProgramNames();

class RunningObjects {
  public:
    RunningObjects() = default;
    ~RunningObjects();
    RunningObjects(const RunningObjects&) = delete;
    RunningObjects& operator=(const RunningObjects&) = delete;

    void ShowApplication(IUnknown* application);
    /// Adds a workbook, to be found under its name.
    void AddWorkbook(const std::u16string& name, IUnknown* workbook);
    /// Takes the newest workbook away.
    void RemoveWorkbook();
    std::size_t workbooks() const { return workbooks_.size(); }

  private:
    DWORD application_ = 0;
    std::vector<DWORD> workbooks_;
};

} // namespace metrify::host
