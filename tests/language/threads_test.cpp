// Each thread has its own calculator: any number of threads may run programs at the same time.

#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_system.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;

// Programs that use all of the state in different ways, so that interference is visible.
const std::vector<std::string>& programs() {
    static const std::vector<std::string> all = {
        "x = 3 ft\nx; in\ny = x * 2\ny; cm; MKS\nz = [1, 2, 3] m\nz[2] = 7 ft\nz\n",
        "x = 5 s\nx; min\nDefUnit(foo, 3 ft)\n6 foo; ft\nDefUnit(bar, 2 foo)\n1 bar\nx foo\n",
        "cgs\n3 ft\nx = 20 degC\nx; degF\n3 N; dyn\nFPS(N, Pa)\n3 N\n5 psi\n",
        "MKS(ft, kPa)\n3 m\n1 atm\nIPS\n3 m\n2 lbf + 1 N\nfoo\nx\n",
        "begin\nx = 2\ny = x^2 + sin(0)\nend\nPrintFunc\nx = 4 m\nPrintFunc\nend\n",
        "sin(]\n1 + 1\nx = 2\n(((1\n",
        "1 +\nfoo + 1\nx = 1 )\n3 m + 1 s\n1 / 0\n[1, 2] * [3]\n(-8) ^ (1/3)\n2 ^ (1 m)\nx[4] = 2\n",
        "# a comment\nDefUnit(foo, 5 kg)\nx = 2 foo\nx; foo\nfoo = 3\nDefUnit(x, 2)\nabs(-3 m); ft\n",
    };
    return all;
}

std::vector<std::string> listings_of_one_thread() {
    std::vector<std::string> listings;
    for (const std::string& program : programs())
        listings.push_back(run(program));
    return listings;
}

constexpr int rounds = is_sanitized ? 50 : 500;

// Runs all programs repeatedly, starting with a given one. Counts listings that differ.
void run_all(std::size_t first, const std::vector<std::string>& expected, std::atomic<bool>& start,
             std::atomic<int>& differences) {
    while (!start)
        std::this_thread::yield();
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < programs().size(); ++i) {
            const std::size_t at = (first + i) % programs().size();
            if (run(programs()[at]) != expected[at])
                ++differences;
        }
    }
}

int differences_among(std::size_t thread_count) {
    const std::vector<std::string> expected = listings_of_one_thread();
    std::atomic<bool> start = false;
    std::atomic<int> differences = 0;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < thread_count; ++i)
        threads.emplace_back(run_all, i, std::cref(expected), std::ref(start), std::ref(differences));
    start = true;
    for (std::thread& thread : threads)
        thread.join();
    return differences;
}

TEST(threads, two_get_the_results_of_one) {
    EXPECT_EQ(differences_among(2), 0);
}

TEST(threads, eight_get_the_results_of_one) {
    EXPECT_EQ(differences_among(8), 0);
}

TEST(threads, can_run_at_the_same_time_as_the_main_thread) {
    const std::vector<std::string> expected = listings_of_one_thread();
    std::atomic<bool> start = true;
    std::atomic<int> differences = 0;
    std::thread other(run_all, 0, std::cref(expected), std::ref(start), std::ref(differences));
    run_all(3, expected, start, differences);
    other.join();
    EXPECT_EQ(differences, 0);
}

TEST(threads, run_correctly_in_their_first_run_however_many_are_started) {
    const std::vector<std::string> expected = listings_of_one_thread();
    constexpr std::size_t count = is_sanitized ? 200 : 2000;
    std::atomic<int> differences = 0;
    for (std::size_t i = 0; i < count; i += 2) {
        const auto run_one = [&expected, &differences](std::size_t n) {
            const std::size_t at = n % programs().size();
            if (run(programs()[at]) != expected[at])
                ++differences;
        };
        std::thread first(run_one, i);
        std::thread second(run_one, i + 1);
        first.join();
        second.join();
    }
    EXPECT_EQ(differences, 0);
}

// The state of a thread is not changed by other threads.
TEST(threads, keep_their_stores_while_others_run) {
    add_var("x", scalar(7, in_m));
    set_unit_system(system_cgs);
    std::thread([] {
        EXPECT_EQ(find_var("x"), nullptr);
        EXPECT_EQ(current_unit_system(), system_MKS);
        run("FPS(ft)\nx = 3 s\nDefUnit(foo, 2)\nsin(]");
    }).join();
    ASSERT_NE(find_var("x"), nullptr);
    EXPECT_TRUE(equal(find_var("x")->value, scalar(7, in_m)));
    EXPECT_EQ(current_unit_system(), system_cgs);
    EXPECT_EQ(exception_count(), 0);
    free_all_vars();
    reset_unit_state();
}

} // namespace
