// After each test the heaps of the process are checked. If Windows marks the ends of blocks and the contents
// of free ones, as with cmake/checks/wine_heap, blocks are found that were written past their end or after
// they were freed.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

bool are_heaps_whole() {
    std::array<HANDLE, 64> heaps = {};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    return count <= heaps.size() && std::all_of(heaps.begin(), heaps.begin() + count, [](HANDLE heap) {
               return HeapValidate(heap, 0, nullptr) != 0;
           });
}

class heap_checks : public testing::EmptyTestEventListener {
    // The process ends, since nothing else can be relied on.
    void OnTestEnd(const testing::TestInfo& test) override {
        if (are_heaps_whole())
            return;
        std::fprintf(stderr, "a heap is damaged after %s.%s\n", test.test_suite_name(), test.name());
        std::_Exit(EXIT_FAILURE);
    }
};

[[maybe_unused]] const bool is_listening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new heap_checks); // NOLINT: the list owns it
    return true;
}();

TEST(heap_checks, find_whole_heaps) {
    EXPECT_TRUE(are_heaps_whole());
}

} // namespace
