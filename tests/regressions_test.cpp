// Inputs that once went wrong. That they come back at all is what counts; a run knows nothing of another one,
// so they come back the same.

#include "calc/driver.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

TEST(regressions, come_back_the_same_each_time) {
    int count = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(METRIFY_SOURCE_DIR) / "tests" / "regressions")) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(in), {});
        const metrify::listing first = metrify::interpret_dimensional_input_lines(text.c_str());
        const metrify::listing second = metrify::interpret_dimensional_input_lines(text.c_str());
        EXPECT_EQ(first.view(), second.view()) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace
