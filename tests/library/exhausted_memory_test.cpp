// Exhausted memory is a status of the library's functions: every allocation of a call fails once.

#include "base/numeric_utilities.h"
#include "tests/allocations.h"
#include "tests/library/calls.h"

#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify::test;

constexpr std::string_view program = "DefUnit(ell, 18 in)\n"
                                     "v = [1, 2, 3] ell\n"
                                     "cgs\n"
                                     "x = 2\n"
                                     "begin\n"
                                     "y = x^2 - 9\n"
                                     "end\n"
                                     "solve(y, x)\n"
                                     "x\n"
                                     "fmin(y, x)\n"
                                     "PrintFunc\n"
                                     "1 foo\n";

// Lets an allocation of the call fail, after so many others. False if the call has no more than these; it
// then succeeds.
template <class Call>
bool fails(Call call, int others, std::ptrdiff_t live_afterwards) {
    fail_allocation_after(others);
    const metrify_status status = call();
    const bool has_failed = has_failed_allocation();
    fail_allocation_after(-1);
    if (!has_failed) {
        EXPECT_EQ(status, METRIFY_OK) << others;
        return false;
    }
    EXPECT_EQ(status, METRIFY_OUT_OF_MEMORY) << others;
    EXPECT_STREQ(metrify_message(), "out of memory") << others;
    EXPECT_EQ(live_blocks(), live_afterwards) << others;
    return true;
}

// Repeats the call, letting one allocation after another fail, until it has no more. Returns how often it
// failed.
template <class Call>
int failures(Call call) {
    int others = 0;
    while (fails(call, others, live_blocks()) && !testing::Test::HasFailure())
        ++others;
    return others;
}

void expect_failures_of_a_run() {
    const std::string expected = listing_of(program); // also makes what the thread keeps
    metrify_text* listing = nullptr;
    EXPECT_GT(failures([&] { return metrify_run(program.data(), program.size(), &listing); }), 5);
    EXPECT_EQ(taken(listing), expected);
}

void expect_failures_of_a_conversion() {
    const std::string units = "ft" + std::string(400, ' '); // too long for a text without an allocation
    converted(1, units, "m");
    metrify_cells* answer = nullptr;
    EXPECT_GT(failures([&] { return metrify_convert(1, units.data(), units.size(), "m", 1, &answer); }), 0);
    EXPECT_EQ(metrify_cells_number(answer), 0.3048);
    metrify_cells_free(answer);
}

void expect_failures_of_a_plan() {
    const std::string units = "m" + std::string(400, ' ');
    const plan_handle first("ft", units); // also makes what the thread keeps
    metrify_plan* plan = nullptr;
    EXPECT_GT(failures([&] { return metrify_plan_new("ft", 2, units.data(), units.size(), &plan); }), 0);
    EXPECT_NEAR(metrify_plan_convert(plan, 1), 0.3048, 1e-14);
    metrify_plan_free(plan);
}

void expect_failures_of_a_new_calculator() {
    metrify_calculator* calculator = nullptr;
    // The calculator and the request that can interrupt it.
    EXPECT_EQ(failures([&] { return metrify_calculator_new(&calculator); }), 2);
    metrify_calculator_free(calculator);
}

void expect_resets_of_a_calculator() {
    const std::string expected = listing_of("1 m");
    listing_of(program);
    for (int others = 0;; ++others) {
        calculator_handle used;
        const std::ptrdiff_t without_session = live_blocks();
        used.enter("x = 7 ft\ncgs");
        metrify_text* listing = nullptr;
        const auto enter = [&] {
            return metrify_calculator_enter(used.get(), program.data(), program.size(), &listing);
        };
        if (!fails(enter, others, without_session)) {
            EXPECT_GT(others, 5);
            metrify_text_free(listing);
            break;
        }
        ASSERT_FALSE(testing::Test::HasFailure());
        ASSERT_EQ(listing, nullptr);
        ASSERT_EQ(used.enter("1 m"), expected) << others;
        ASSERT_NE(used.enter("x").find("'x' undefined"), std::string::npos) << others;
    }
}

void expect_a_fault_without_its_message() {
    metrify_unit unit = {};
    const std::string name(400, 'x');
    fail_allocation_after(0);
    EXPECT_EQ(metrify_unit_find(name.data(), name.size(), &unit), METRIFY_OUT_OF_MEMORY);
    fail_allocation_after(-1);
    EXPECT_EQ(metrify_unit_find(name.data(), name.size(), &unit), METRIFY_BAD_ARGUMENT);
}

TEST(exhausted_memory, is_a_status_of_a_run) {
    expect_failures_of_a_run();
}
TEST(exhausted_memory, is_a_status_of_a_conversion) {
    expect_failures_of_a_conversion();
}
TEST(exhausted_memory, is_a_status_of_a_plan) {
    expect_failures_of_a_plan();
}
TEST(exhausted_memory, is_a_status_of_a_new_calculator) {
    expect_failures_of_a_new_calculator();
}
TEST(exhausted_memory, resets_a_calculator) {
    expect_resets_of_a_calculator();
}
TEST(exhausted_memory, can_leave_a_fault_without_its_message) {
    expect_a_fault_without_its_message();
}
// Allocations are counted and fail by thread. Each call is made by two threads at the same time.
TEST(exhausted_memory, is_a_status_of_the_thread_whose_allocation_fails) {
    constexpr std::array expectations = {
        expect_failures_of_a_run,      expect_failures_of_a_conversion,
        expect_failures_of_a_plan,     expect_failures_of_a_new_calculator,
        expect_resets_of_a_calculator, expect_a_fault_without_its_message,
    };
    for (int round = 0; round < 10; ++round) {
        std::vector<std::thread> threads;
        for (const auto expect : expectations)
            for (int twin = 0; twin < 2; ++twin)
                threads.emplace_back([expect] {
                    for (int repeated = 0; repeated < 10; ++repeated)
                        expect();
                });
        const std::string expected = listing_of(program);
        for (int runs = 0; runs < 20; ++runs)
            EXPECT_EQ(listing_of(program), expected) << "in a thread with enough memory";
        for (std::thread& thread : threads)
            thread.join();
    }
}
TEST(exhausted_memory, still_ends_the_process_outside_the_library) {
    EXPECT_EXIT(metrify::nrerror("text"), testing::ExitedWithCode(1), "text");
    listing_of("1 m");
    EXPECT_EXIT(metrify::nrerror("text"), testing::ExitedWithCode(1), "text");
}

} // namespace
