// The library from which add-ins import the narrow entries. They call the host, which is the program of the
// process.

#include "host/core/argument_list.h"

#include <windows.h>

using metrify::XLOPER;

namespace {

metrify::Excel4vFunction HostEntry() {
    static const auto entry = reinterpret_cast<metrify::Excel4vFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), "Excel4v")));
    return entry;
}

} // namespace

extern "C" int METRIFY_HOST_CALL Excel4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
    const metrify::Excel4vFunction entry = HostEntry();
    return entry ? entry(function, result, count, arguments) : metrify::xlretFailed;
}

extern "C" int Excel4(int function, XLOPER* result, int count, ...) {
    std::va_list list;
    va_start(list, count);
    const int code = metrify::host::CallWithList(::Excel4v, function, result, count, list);
    va_end(list);
    return code;
}
