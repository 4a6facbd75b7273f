// Inputs that once failed, in tests/regressions: each <name>.in must give the listing in <name>.out, in each
// of two runs.

#include "language/driver.h"
#include "machine/solver_binding.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string read_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(regressions, give_their_listings_each_time) {
    int count = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(METRIFY_SOURCE_DIR) / "tests" / "regressions")) {
        if (entry.path().extension() != ".in")
            continue;
        const std::string text = read_file(entry.path());
        const std::string expected = read_file(fs::path(entry.path()).replace_extension(".out"));
        metrify::teardown_solver_binding();
        for (int run = 1; run <= 2; ++run) {
            EXPECT_EQ(metrify::interpret_dimensional_input_lines(text.c_str()).view(), expected)
                << entry.path() << ", run " << run;
        }
        ++count;
    }
    EXPECT_GE(count, 4);
}

} // namespace
