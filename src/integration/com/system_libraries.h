#pragma once

// Functions of Windows whose libraries are loaded while the add-in runs, from the folder of the system. An
// imported library is first sought in the folder of the host, unless Windows keeps its name for itself.

#include <oleacc.h>

struct tagINITCOMMONCONTROLSEX;

namespace metrify {

/// A library by its file name; null if the system has none.
HMODULE LoadFromSystemFolder(const char* name);

/// A function of a library, which may be null; null if there is none.
template <class Function>
Function* FindFunction(HMODULE library, const char* name) {
    if (!library)
        return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// Functions of oleacc.dll and comctl32.dll. One that the system lacks fails, with E_NOTIMPL or FALSE.
struct SystemFunctions {
    /// Loads the libraries. They stay loaded until the process ends, since the objects and window classes
    /// that they make outlive the calls.
    SystemFunctions();

    decltype(&::AccessibleObjectFromWindow) accessible_object_from_window;
    decltype(&::AccessibleChildren) accessible_children;
    BOOL(WINAPI* init_common_controls)(const tagINITCOMMONCONTROLSEX*);
};

/// Those of this module, loaded at the first call.
const SystemFunctions& GetSystemFunctions();

} // namespace metrify
