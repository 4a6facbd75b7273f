// All routines of the special functions on several threads at once give what one thread gives.

#include "tests/numerics/routines.h"

#include <atomic>
#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;

// Arguments in all ranges, some of them invalid; every routine gets the same and uses as many as it needs.
constexpr double points[] = {0.15, 0.7, 1.0, 2.5, 9.0, 30.0};

std::string results_of_all_routines() {
    std::string results;
    for (const routine& tested : all_routines()) {
        for (const double x : points) {
            for (const double y : points) {
                work_text err;
                for (const double f : tested.call({x, y, 0.5, 0.5}, err.str))
                    results.append(std::to_string(std::bit_cast<std::uint64_t>(f))).append(" ");
                results.append(err.view());
            }
        }
    }
    return results;
}

TEST(threads, all_special_functions_give_what_one_thread_gives) {
    constexpr std::size_t thread_count = 4;
    std::vector<std::string> results(thread_count);
    std::atomic<bool> go = false;
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&] {
            while (!go)
                std::this_thread::yield();
            result = results_of_all_routines();
        });
    }
    go = true;
    for (std::thread& thread : threads)
        thread.join();
    // The single thread runs last, so that values computed once are computed while several threads run.
    const std::string expected = results_of_all_routines();
    for (const std::string& result : results)
        EXPECT_EQ(result, expected);
}

} // namespace
