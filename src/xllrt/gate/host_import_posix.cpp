#include "xllrt/gate/host_primitives.h"

#include <dlfcn.h>

namespace metrify {

void ConnectImportedHost() {
    ConnectHost({.excel4 = reinterpret_cast<Excel4Function>(dlsym(RTLD_DEFAULT, "Excel4")),
                 .excel4v = reinterpret_cast<Excel4vFunction>(dlsym(RTLD_DEFAULT, "Excel4v"))});
}

} // namespace metrify
