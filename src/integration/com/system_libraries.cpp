#include "integration/com/system_libraries.h"

#include <array>
#include <commctrl.h>
#include <string>

namespace metrify {

namespace {

HRESULT WINAPI FindNoObject(HWND, DWORD, REFIID, void** object) {
    *object = nullptr;
    return E_NOTIMPL;
}

HRESULT WINAPI FindNoChildren(IAccessible*, LONG, LONG, VARIANT*, LONG* count) {
    *count = 0;
    return E_NOTIMPL;
}

BOOL WINAPI InitNoControls(const INITCOMMONCONTROLSEX*) {
    return FALSE;
}

template <class Function>
Function* FindOr(Function* substitute, HMODULE library, const char* name) {
    Function* const found = FindFunction<Function>(library, name);
    return found ? found : substitute;
}

} // namespace

// A search along the path could find another library of that name.
HMODULE LoadFromSystemFolder(const char* name) {
    std::array<char, MAX_PATH> folder;
    const UINT length = GetSystemDirectoryA(folder.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    return LoadLibraryA((std::string(folder.data(), length) + "\\" + name).c_str());
}

SystemFunctions::SystemFunctions() {
    const HMODULE accessibility = LoadFromSystemFolder("oleacc.dll");
    const HMODULE controls = LoadFromSystemFolder("comctl32.dll");
    accessible_object_from_window = FindOr(FindNoObject, accessibility, "AccessibleObjectFromWindow");
    accessible_children = FindOr(FindNoChildren, accessibility, "AccessibleChildren");
    init_common_controls = FindOr(InitNoControls, controls, "InitCommonControlsEx");
}

const SystemFunctions& GetSystemFunctions() {
    static const SystemFunctions functions;
    return functions;
}

} // namespace metrify
