#pragma once

// The host's main window and its workbook windows.

#include "integration/com/com_ptr.h"

#include <oaidl.h>
#include <string>
#include <vector>
#include <windows.h>

namespace metrify::host {

inline constexpr const char* kMainWindowClass = "XLMAIN";
inline constexpr const char* kWorkbookWindowClass = "EXCEL7";

class HostWindows {
  public:
    HostWindows();
    ~HostWindows();
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;

    HWND main() const { return main_; }
    const std::vector<HWND>& workbooks() const { return workbooks_; }

    /// Opens windows, or closes the newest ones, until the count is reached.
    void SetWorkbookCount(std::size_t count);

    /// The native object of a workbook window; none by default.
    void SetNativeObject(ComPtr<IDispatch> object) { native_object_ = std::move(object); }

  private:
    static LRESULT CALLBACK MainProcedure(HWND window, UINT message, WPARAM first, LPARAM second);
    static LRESULT CALLBACK WorkbookProcedure(HWND window, UINT message, WPARAM first, LPARAM second);

    HWND main_ = nullptr;
    std::vector<HWND> workbooks_;
    ComPtr<IDispatch> native_object_;
};

} // namespace metrify::host
