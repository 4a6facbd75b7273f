#include "integration/application/window_search.h"

#include "integration/com/dispatch_call.h"
#include "integration/com/system_libraries.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_window.h"
#include "xllrt/platform/passed_pointer.h"

#include <array>

namespace metrify {

namespace {

// Ends the enumeration with the first window of a workbook.
BOOL CALLBACK LookAtChild(HWND child, LPARAM context) {
    std::array<char, 50> class_name{};
    GetClassNameA(child, class_name.data(), static_cast<int>(class_name.size()));
    if (std::string_view(class_name.data()) != "EXCEL7")
        return TRUE;
    *PassedPointer<HWND*>(context) = child;
    return FALSE;
}

// A workbook window of the host. If no workbook is open, one is, for the lifetime of this object.
class WorkbookWindow {
  public:
    explicit WorkbookWindow(HWND main) : window_(Find(main)) {
        if (window_)
            return;
        is_created_ = CallDiscard(xlcNew, CXlOper(1.0)) == xlretSuccess;
        if (is_created_)
            window_ = Find(main);
    }
    WorkbookWindow(const WorkbookWindow&) = delete;
    WorkbookWindow& operator=(const WorkbookWindow&) = delete;
    ~WorkbookWindow() {
        if (is_created_)
            CallDiscard(xlcClose, CXlOper(false), CXlOper(false));
    }

    HWND Get() const { return window_; }

  private:
    static HWND Find(HWND main) {
        HWND found = nullptr;
        EnumChildWindows(main, LookAtChild, reinterpret_cast<LPARAM>(&found));
        return found;
    }

    HWND window_;
    bool is_created_ = false;
};

bool ReadApplication(IDispatch* window, ComPtr<IDispatch>& application, ComFailure& failure) {
    ComVariant value;
    const DispatchOutcome outcome = CallMember(
        window, {.name = u"Application", .flags = DISPATCH_PROPERTYGET, .locale = LOCALE_SYSTEM_DEFAULT}, {},
        value);
    failure.code = outcome.code;
    if (FAILED(outcome.code)) {
        failure.text = SystemText(outcome.step, outcome.code);
        return false;
    }
    application = value.Object();
    return true;
}

} // namespace

bool FindApplicationByWindow(ComPtr<IDispatch>& application, ComFailure& failure) {
    failure.code = E_FAIL;
    const auto main = static_cast<HWND>(GetHostWindow());
    if (!main)
        return false;
    const WorkbookWindow workbook(main);
    if (!workbook.Get()) {
        failure.text = u"EnumChildWindows";
        return false;
    }
    ComPtr<IDispatch> window;
    failure.code = GetSystemFunctions().accessible_object_from_window(
        workbook.Get(), static_cast<DWORD>(OBJID_NATIVEOM), IID_IDispatch, window.ReceiveAny());
    if (SUCCEEDED(failure.code) && !window)
        failure.code = E_FAIL;
    if (FAILED(failure.code)) {
        failure.text = u"AccessibleObjectFromWindow";
        return false;
    }
    return ReadApplication(window.Get(), application, failure);
}

} // namespace metrify
