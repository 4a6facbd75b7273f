#pragma once

// The few entries into the host that everything else is built on. A program that is its own host, or a test,
// supplies others.

#include "xllrt/platform/export.h"
#include "xllrt/value/host_records.h"

namespace metrify {

using Excel4Function = int (*)(int function, XLOPER* result, int count, ...);
using Excel4vFunction = int(METRIFY_HOST_CALL*)(int function, XLOPER* result, int count, XLOPER* arguments[]);
/// The host's callback `MdCallBack12`.
using Excel12Entry = int(METRIFY_HOST_CALL*)(int function, int count, XLOPER12* arguments[],
                                             XLOPER12* result);

/// Looks the name "MdCallBack12" up in the main module of the process, which is the host. Null if there is
/// none.
Excel12Entry FindHostCallback();

/// What a host supplies.
struct HostPrimitives {
    Excel4Function excel4 = nullptr;
    Excel4vFunction excel4v = nullptr;
    /// Finds the wide entry; asked until it finds one.
    Excel12Entry (*find_entry)() = FindHostCallback;
};

/// Takes the primitives of a host. What was learnt of an earlier one, its version and its wide entry, is
/// forgotten.
void ConnectHost(const HostPrimitives& primitives);

/// Takes the primitives that the module imports from XLCall32, `Excel4` and `Excel4v`; where modules have no
/// such imports, those of the process.
void ConnectImportedHost();

/// The primitives in force.
const HostPrimitives& Primitives();

/// Calls the host with a function number and narrow records. Gives its return code; `xlretFailed` without
/// host.
template <class... Records>
int Excel4(int function, XLOPER* result, Records*... arguments) {
    const Excel4Function excel4 = Primitives().excel4;
    return excel4 ? excel4(function, result, static_cast<int>(sizeof...(arguments)), arguments...)
                  : xlretFailed;
}

int Excel4v(int function, XLOPER* result, int count, XLOPER* arguments[]);

/// Calls the host with a function number and `count` pointers to wide records. Gives its return code;
/// `xlretFailed` if no wide entry is found, `xlretInvCount` for a negative count or one above 255.
int Excel12(int function, XLOPER12* result, int count, ...);

/// As `Excel12`, with the pointers in an array. The count is for the host to judge.
int Excel12v(int function, XLOPER12* result, int count, XLOPER12* arguments[]);

/// Exported: a loader's way to name the wide entry. The pointer is taken only if none is known and none is
/// found in the main module.
extern "C" METRIFY_EXPORT void METRIFY_HOST_CALL SetExcel12EntryPt(Excel12Entry entry);

} // namespace metrify
