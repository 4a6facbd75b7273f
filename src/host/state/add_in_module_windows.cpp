#include "host/sheet/utf8.h"
#include "host/state/add_in_module.h"

#include <filesystem>
#include <windows.h>

namespace metrify::host {

namespace {

class LibraryModule final : public AddInModule {
  public:
    LibraryModule(HMODULE handle, std::u16string path) : handle_(handle), path_(std::move(path)) {}
    ~LibraryModule() override { FreeLibrary(handle_); }
    LibraryModule(const LibraryModule&) = delete;
    LibraryModule& operator=(const LibraryModule&) = delete;

    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override {
        return reinterpret_cast<void*>(GetProcAddress(handle_, name.c_str()));
    }

  private:
    HMODULE handle_;
    std::u16string path_;
};

} // namespace

std::unique_ptr<AddInModule> LoadAddInModule(const std::string& path, std::string& error) {
    const std::filesystem::path whole = std::filesystem::absolute(FromUtf8(path));
    const HMODULE handle = LoadLibraryW(whole.c_str());
    if (!handle) {
        error = "Windows error " + std::to_string(GetLastError());
        return nullptr;
    }
    return std::make_unique<LibraryModule>(handle, whole.u16string());
}

} // namespace metrify::host
