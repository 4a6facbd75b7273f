// Requests that no machine can fulfil. They need a long of 64 bits.

#include "base/numeric_utilities.h"
#include "base/text_str.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace metrify;

constexpr long far_too_many = std::numeric_limits<long>::max() / 2;

std::string fatal(const std::string& text) {
    return "Numerical Recipes run-time error \\.\\.\\.\n" + text +
           "\n\\.\\.\\. now exiting to system \\.\\.\\.\n\n";
}

class exhausted_memory_death_test : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(exhausted_memory_death_test, ends_the_process_in_dvector) {
    EXPECT_EXIT(dvector(0, far_too_many), testing::ExitedWithCode(1),
                fatal("Allocation failure in dvector\\(\\)\\."));
}

TEST_F(exhausted_memory_death_test, ends_the_process_in_ivector) {
    EXPECT_EXIT(ivector(1, far_too_many), testing::ExitedWithCode(1),
                fatal("Allocation failure in ivector\\(\\)\\."));
}

TEST_F(exhausted_memory_death_test, ends_the_process_in_dmatrix) {
    EXPECT_EXIT(dmatrix(1, 1, 1, far_too_many), testing::ExitedWithCode(1),
                fatal("Allocation failure 2 in dmatrix\\(\\)\\."));
}

// A request for bytes is always refused by malloc itself, and a sanitizer's malloc ends the process
// differently.
#if !METRIFY_SANITIZED

TEST_F(exhausted_memory_death_test, ends_the_process_in_cvector) {
    EXPECT_EXIT(cvector(0, far_too_many), testing::ExitedWithCode(1),
                fatal("Allocation failure in cvector\\(\\)\\."));
}

TEST_F(exhausted_memory_death_test, ends_the_process_in_cmatrix) {
    EXPECT_EXIT(cmatrix(0, 0, 0, far_too_many), testing::ExitedWithCode(1),
                fatal("Allocation failure 2 in cmatrix\\(\\)\\."));
}

TEST_F(exhausted_memory_death_test, ends_the_process_when_a_text_is_made) {
    EXPECT_EXIT(allocate_and_init_str_kelb(far_too_many, 1024), testing::ExitedWithCode(1),
                fatal("Allocation failure in allocate_and_init_str_kelb\\(\\)\\."));
}

TEST_F(exhausted_memory_death_test, ends_the_process_when_a_text_grows) {
    EXPECT_EXIT(
        {
            text_str* s = allocate_and_init_str_kelb(16, far_too_many);
            s = str_append_text(&s, "more than sixteen characters");
        },
        testing::ExitedWithCode(1), fatal("Allocation failure in allocate_and_init_str_kelb\\(\\)\\."));
}

#endif

} // namespace
