#include "host/core/host_exports.h"

#include "host/core/argument_list.h"
#include "host/core/host.h"

#ifdef __ELF__
#define METRIFY_HOST_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define METRIFY_HOST_EXPORT extern "C" __declspec(dllexport)
#endif

using metrify::XLOPER;
using metrify::XLOPER12;
using metrify::host::Host;

METRIFY_HOST_EXPORT int METRIFY_HOST_CALL MdCallBack12(int function, int count, XLOPER12* arguments[],
                                                       XLOPER12* result) {
    Host* host = Host::Current();
    return host ? host->Call12(function, result, count, arguments) : metrify::xlretFailed;
}

METRIFY_HOST_EXPORT int METRIFY_HOST_CALL Excel4v(int function, XLOPER* result, int count,
                                                  XLOPER* arguments[]) {
    Host* host = Host::Current();
    return host ? host->Call4(function, result, count, arguments) : metrify::xlretFailed;
}

METRIFY_HOST_EXPORT int Excel4(int function, XLOPER* result, int count, ...) {
    std::va_list list;
    va_start(list, count);
    const int code = metrify::host::CallWithList(::Excel4v, function, result, count, list);
    va_end(list);
    return code;
}

namespace metrify::host {

HostPrimitives NewestHostPrimitives() {
    return {.excel4 = ::Excel4,
            .excel4v = ::Excel4v,
            .find_entry = []() -> Excel12Entry { return ::MdCallBack12; }};
}

void KeepHostExports() {}

} // namespace metrify::host
