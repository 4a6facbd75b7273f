#include "xllrt/gate/host_primitives.h"

#include <dlfcn.h>

namespace metrify {

Excel12Entry FindHostCallback() {
    static void* const host = dlopen(nullptr, RTLD_LAZY);
    return reinterpret_cast<Excel12Entry>(dlsym(host, "MdCallBack12"));
}

} // namespace metrify
