// What Gnumeric and the add-in find by name.

#include "bridge.h"
#include "host/core/argument_list.h"

#include <array>

using metrify::XLOPER;
using metrify::XLOPER12;
using metrify::gnumeric::Bridge;

extern "C" {

// ---- For Gnumeric

METRIFY_EXPORT void register_actual_excel4v(metrify::Excel4vFunction entry) {
    Bridge::Instance().SetGnumeric(entry);
}

METRIFY_EXPORT int XLCallVer() {
    constexpr int kInterfaceOfNarrowFamily = 0x0500;
    return kInterfaceOfNarrowFamily;
}

// The procedure that is registered, with as many arguments as Gnumeric passes.
METRIFY_EXPORT XLOPER* MetrifyProcedure(XLOPER* a1, XLOPER* a2, XLOPER* a3, XLOPER* a4, XLOPER* a5,
                                        XLOPER* a6, XLOPER* a7, XLOPER* a8, XLOPER* a9, XLOPER* a10,
                                        XLOPER* a11, XLOPER* a12, XLOPER* a13, XLOPER* a14, XLOPER* a15,
                                        XLOPER* a16, XLOPER* a17, XLOPER* a18, XLOPER* a19, XLOPER* a20,
                                        XLOPER* a21, XLOPER* a22, XLOPER* a23, XLOPER* a24, XLOPER* a25,
                                        XLOPER* a26, XLOPER* a27, XLOPER* a28, XLOPER* a29, XLOPER* a30) {
    const std::array arguments = {a1,  a2,  a3,  a4,  a5,  a6,  a7,  a8,  a9,  a10, a11, a12, a13, a14, a15,
                                  a16, a17, a18, a19, a20, a21, a22, a23, a24, a25, a26, a27, a28, a29, a30};
    return Bridge::Instance().CallFunction(arguments);
}

// Gnumeric finds it before that of the add-in, whose record it never sees.
METRIFY_EXPORT void xlAutoFree(XLOPER* /*record*/) {
    Bridge::Instance().GiveBackResult();
}

// ---- For the add-in

METRIFY_EXPORT int Excel4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
    return Bridge::Instance().Call(function, result, count, arguments);
}

METRIFY_EXPORT int Excel4(int function, XLOPER* result, int count, ...) {
    std::va_list list;
    va_start(list, count);
    const int code = metrify::host::CallWithList(::Excel4v, function, result, count, list);
    va_end(list);
    return code;
}

METRIFY_EXPORT int MdCallBack12(int function, int count, XLOPER12* arguments[], XLOPER12* result) {
    return Bridge::Instance().Call(function, result, count, arguments);
}
}
