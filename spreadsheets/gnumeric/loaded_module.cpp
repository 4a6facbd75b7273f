#include "loaded_module.h"

#include "host/sheet/utf8.h"

#include <dlfcn.h>

namespace metrify::gnumeric {

namespace {

// A handle that is kept would keep the module loaded after Gnumeric has unloaded it.
void* FindIn(const std::string& path, const char* name) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!handle)
        return nullptr;
    void* const address = dlsym(handle, name);
    dlclose(handle);
    return address;
}

} // namespace

LoadedModule::LoadedModule(std::u16string path) : path_(std::move(path)) {
    Dl_info add_in;
    if (dladdr(FindIn(host::ToUtf8(path_), "xlAutoOpen"), &add_in) != 0)
        add_in_path_ = add_in.dli_fname;
}

void* LoadedModule::Find(const std::string& name) const {
    return FindIn(add_in_path_, name.c_str());
}

} // namespace metrify::gnumeric
