// The golden programs in tests/listings: each <kind>/<name>.in with its expected listing in <name>.out.

#include "language/driver.h"
#include "machine/solver_binding.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path listings = fs::path(METRIFY_SOURCE_DIR) / "tests" / "listings";

std::string read_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<fs::path> programs() {
    std::vector<fs::path> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(listings))
        if (entry.path().extension() == ".in")
            found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

fs::path expected_of(fs::path program) {
    return program.replace_extension(".out");
}

class golden_program : public testing::TestWithParam<fs::path> {};

TEST_P(golden_program, gives_the_expected_listing) {
    const std::string text = read_file(GetParam());
    // No report of another program may be pending.
    metrify::teardown_solver_binding();
    EXPECT_EQ(metrify::interpret_dimensional_input_lines(text.c_str()).view(),
              read_file(expected_of(GetParam())))
        << GetParam() << ":\n"
        << text;
}

std::string test_name(const testing::TestParamInfo<fs::path>& program) {
    return program.param.parent_path().filename().string() + "__" + program.param.stem().string();
}

INSTANTIATE_TEST_SUITE_P(listings, golden_program, testing::ValuesIn(programs()), test_name);

TEST(golden_programs, show_every_message) {
    std::string all;
    for (const fs::path& program : programs())
        all += read_file(expected_of(program));
    std::ifstream messages(listings / "messages.txt");
    int count = 0;
    for (std::string message; std::getline(messages, message); ++count)
        EXPECT_THAT(all, testing::HasSubstr(message));
    EXPECT_GT(count, 0);
}

} // namespace
