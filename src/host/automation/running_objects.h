#pragma once

// The host's entries in the running object table: itself and each open workbook.

#include "integration/com/com_ptr.h"

#include <oaidl.h>
#include <string>
#include <vector>
#include <windows.h>

namespace metrify::host {

/// Registers and unregisters the host's program identifiers, as its installation does.
void RegisterProgramNames();
void UnregisterProgramNames();

class RunningObjects {
  public:
    RunningObjects() = default;
    ~RunningObjects();
    RunningObjects(const RunningObjects&) = delete;
    RunningObjects& operator=(const RunningObjects&) = delete;

    void ShowApplication(IUnknown* application);
    /// Adds a workbook under its name.
    void AddWorkbook(const std::u16string& name, IUnknown* workbook);
    /// Removes the newest workbook.
    void RemoveWorkbook();
    std::size_t workbooks() const { return workbooks_.size(); }

  private:
    DWORD application_ = 0;
    std::vector<DWORD> workbooks_;
};

} // namespace metrify::host
