// Libraries of Windows that are loaded from the folder of the system.

#include "integration/com/system_libraries.h"
#include "tests/integration/replaced_call.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace metrify::host {
namespace {

// A system that notes which libraries are loaded, and may have none.
struct NotedLoads {
    explicit NotedLoads(bool has_libraries) {
        has = has_libraries;
        paths.clear();
        current = this;
    }
    ~NotedLoads() { current = nullptr; }
    NotedLoads(const NotedLoads&) = delete;
    NotedLoads& operator=(const NotedLoads&) = delete;

    static HMODULE WINAPI Load(const char* path) {
        paths.emplace_back(path);
        return has ? reinterpret_cast<decltype(&LoadLibraryA)>(current->load.original())(path) : nullptr;
    }

    static inline bool has = false;
    static inline std::vector<std::string> paths;
    static inline NotedLoads* current = nullptr;
    ReplacedPointer load{ImportedFunction("LoadLibraryA"), AddressOf(Load)};
};

TEST(system_libraries, are_loaded_from_the_folder_of_the_system) {
    std::array<char, MAX_PATH> folder{};
    ASSERT_NE(GetSystemDirectoryA(folder.data(), MAX_PATH), 0U);
    const NotedLoads loads(true);
    const SystemFunctions functions;
    EXPECT_EQ(NotedLoads::paths, (std::vector<std::string>{std::string(folder.data()) + "\\oleacc.dll",
                                                           std::string(folder.data()) + "\\comctl32.dll"}));
    EXPECT_EQ(AddressOf(functions.accessible_object_from_window),
              AddressOf(GetProcAddress(GetModuleHandleA("oleacc.dll"), "AccessibleObjectFromWindow")));
    EXPECT_EQ(AddressOf(functions.accessible_children),
              AddressOf(GetProcAddress(GetModuleHandleA("oleacc.dll"), "AccessibleChildren")));
    EXPECT_EQ(AddressOf(functions.init_common_controls),
              AddressOf(GetProcAddress(GetModuleHandleA("comctl32.dll"), "InitCommonControlsEx")));
}

TEST(system_libraries, that_the_system_lacks_have_functions_that_fail) {
    const NotedLoads loads(false);
    const SystemFunctions functions;
    int something = 0;
    void* object = &something;
    EXPECT_EQ(functions.accessible_object_from_window(nullptr, 0, IID_IDispatch, &object), E_NOTIMPL);
    EXPECT_EQ(object, nullptr);
    LONG count = 5;
    EXPECT_EQ(functions.accessible_children(nullptr, 0, 1, nullptr, &count), E_NOTIMPL);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(functions.init_common_controls(nullptr), FALSE);
}

} // namespace
} // namespace metrify::host
