#include "tests/integration/replaced_call.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>

namespace metrify::host {

namespace {

void Write(void** place, void* value) {
    DWORD protection = 0;
    ASSERT_TRUE(VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &protection));
    *place = value;
    VirtualProtect(place, sizeof(*place), protection, &protection);
}

class LoadedModule {
  public:
    explicit LoadedModule(void* module)
        : start_(reinterpret_cast<std::uintptr_t>(module ? module : GetModuleHandleW(nullptr))) {}

    template <class What>
    What* At(std::uintptr_t offset) const {
        return reinterpret_cast<What*>(start_ + offset);
    }

  private:
    std::uintptr_t start_;
};

} // namespace

ReplacedPointer::ReplacedPointer(void** place, void* replacement) : place_(place), original_(*place) {
    Write(place_, replacement);
}

ReplacedPointer::~ReplacedPointer() {
    Write(place_, original_);
}

void** ImportedFunction(const char* name, void* module) {
    const LoadedModule loaded(module);
    const auto& headers =
        *loaded.At<IMAGE_NT_HEADERS>(static_cast<std::uintptr_t>(loaded.At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = loaded.At<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* names = loaded.At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        auto* places = loaded.At<void*>(library->FirstThunk);
        for (std::size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
            if (IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal))
                continue;
            const auto* entry =
                loaded.At<IMAGE_IMPORT_BY_NAME>(static_cast<std::uintptr_t>(names[i].u1.AddressOfData));
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) == 0)
                return &places[i];
        }
    }
    return nullptr;
}

void** MethodOf(IUnknown* object, std::size_t number) {
    return *reinterpret_cast<void***>(object) + number;
}

} // namespace metrify::host
