#include "host/automation/host_windows.h"

#include "xllrt/platform/passed_pointer.h"

#include <oleacc.h>

namespace metrify::host {

namespace {

void RegisterWindowClass(const char* name, WNDPROC procedure) {
    WNDCLASSA description{};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.lpszClassName = name;
    description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    RegisterClassA(&description); // no effect after the first call
}

HostWindows* OwnerOf(HWND window) {
    return PassedPointer<HostWindows*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

} // namespace

HostWindows::HostWindows() {
    RegisterWindowClass(kMainWindowClass, MainProcedure);
    RegisterWindowClass(kWorkbookWindowClass, WorkbookProcedure);
    main_ = CreateWindowExA(0, kMainWindowClass, "Spreadsheet", WS_OVERLAPPEDWINDOW, 0, 0, 800, 600, nullptr,
                            nullptr, GetModuleHandleA(nullptr), nullptr);
}

HostWindows::~HostWindows() {
    SetWorkbookCount(0);
    DestroyWindow(main_);
}

void HostWindows::SetWorkbookCount(std::size_t count) {
    while (workbooks_.size() > count) {
        DestroyWindow(workbooks_.back());
        workbooks_.pop_back();
    }
    while (workbooks_.size() < count) {
        const HWND window = CreateWindowExA(0, kWorkbookWindowClass, "", WS_CHILD | WS_VISIBLE, 0, 0, 400,
                                            300, main_, nullptr, GetModuleHandleA(nullptr), nullptr);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        workbooks_.push_back(window);
    }
}

LRESULT CALLBACK HostWindows::MainProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_CLOSE) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, first, second);
}

LRESULT CALLBACK HostWindows::WorkbookProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    const HostWindows* const owner = OwnerOf(window);
    const auto object_id = static_cast<LONG>(second);
    if (message == WM_GETOBJECT && object_id == OBJID_NATIVEOM && owner && owner->native_object_)
        return LresultFromObject(IID_IDispatch, first, owner->native_object_.Get());
    return DefWindowProcA(window, message, first, second);
}

} // namespace metrify::host
