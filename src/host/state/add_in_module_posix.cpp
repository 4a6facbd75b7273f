#include "host/state/add_in_module.h"
#include "xllrt/text/code_page.h"

#include <dlfcn.h>
#include <filesystem>

namespace metrify::host {

namespace {

class SharedObject final : public AddInModule {
  public:
    SharedObject(void* handle, std::u16string path) : handle_(handle), path_(std::move(path)) {}
    ~SharedObject() override { dlclose(handle_); }
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;

    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override { return dlsym(handle_, name.c_str()); }

  private:
    void* handle_;
    std::u16string path_;
};

} // namespace

std::unique_ptr<AddInModule> LoadAddInModule(const std::string& path, std::string& error) {
    const std::string whole = std::filesystem::absolute(path).string();
    void* handle = dlopen(whole.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        error = dlerror(); // NOLINT(concurrency-mt-unsafe): the text is the calling thread's own
        return nullptr;
    }
    return std::make_unique<SharedObject>(handle, ToWide(whole));
}

} // namespace metrify::host
