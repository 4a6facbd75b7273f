// A run releases all memory that it allocates, as a process may convert for weeks.

#include "tests/testing.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

using namespace metrify;

// Resident memory of the process in bytes.
long resident_size() {
    std::ifstream statm("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statm >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// The growth of memory over many runs, after a tenth as many runs to warm up.
long growth(const std::string& program, int times) {
    for (int i = 0; i < times / 10; ++i)
        run(program);
    const long before = resident_size();
    for (int i = 0; i < times; ++i)
        run(program);
    return resident_size() - before;
}

// A leak of one smallest block, 32 bytes, in each run would be at least 6 MB.
constexpr int conversions = 200000;
constexpr int many_conversions = 1000000;
constexpr long tolerance = 1000000;

class flat_memory : public testing::Test {
  protected:
    // A sanitizer delays the reuse of freed memory, and detects leaks itself.
    void SetUp() override {
        if (is_sanitized)
            GTEST_SKIP();
    }
};

TEST_F(flat_memory, is_kept_by_simple_conversions) {
    ASSERT_GT(resident_size(), 0);
    EXPECT_LT(growth("3.5 ft; m", many_conversions), tolerance);
}

TEST_F(flat_memory, is_kept_by_conversions_of_compound_units) {
    EXPECT_LT(growth("3.5 kg m^2 / (s^3 A); lbf ft / (s A)", conversions), tolerance);
}

TEST_F(flat_memory, is_kept_by_conversions_that_fail) {
    EXPECT_LT(growth("3.5 ft; s", conversions), tolerance);
    EXPECT_LT(growth("3.5 foo; s", conversions), tolerance);
    EXPECT_LT(growth("sin(]", conversions), tolerance);
    EXPECT_LT(growth(repeated("(", 500), conversions / 10), tolerance);
}

TEST_F(flat_memory, is_kept_by_variables_units_exceptions_and_blocks) {
    EXPECT_LT(growth("a_name_too_long_for_its_place = [1, 2, 3] ft\n"
                     "DefUnit(another_name_too_long_for_its_place, 3 ft)\n"
                     "MKS(ft, kPa another_name_too_long_for_its_place)\n"
                     "begin\nx = 3 ft\ny = x^2\nend\nPrintFunc\nx + 1 s\n",
                     conversions / 10),
              tolerance);
}

TEST_F(flat_memory, is_kept_by_a_long_program_among_short_ones) {
    std::string long_program;
    for (int i = 0; i < 20000; ++i)
        long_program += "v" + std::to_string(i) + " = 3 ft\n";
    run(long_program);
    const long before = resident_size();
    for (int i = 0; i < 20; ++i) {
        run(long_program);
        run("3.5 ft; m");
    }
    EXPECT_LT(resident_size() - before, 4 * tolerance);
}

} // namespace
