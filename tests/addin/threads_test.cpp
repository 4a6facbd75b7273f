#include "addin/worksheet_function.h"
#include "tests/addin/plain_host.h"
#include "tests/xllrt/gate/scripted_host.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/app/xll_lifecycle.h"

#include <array>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;

struct Arguments {
    double val;
    const XCHAR* in_units;
    const XCHAR* out_units;
};

constexpr std::array<Arguments, 8> kArguments = {{{3.5, u"ft", u"m"},
                                                  {20.0, u"degC", u"degF"},
                                                  {1.0, u"atm", u"psi"},
                                                  {2.0, u"yard + 2 ft", u"m; cm"},
                                                  {3.5, u"ft", u"kg"},
                                                  {3.5, u"xyz", u"m"},
                                                  {1.0, u"* [1,2,3] m", u""},
                                                  {60.0, u"miles/hour", u"FPS"}}};

std::string Called(const Arguments& arguments) {
    XLOPER12* record = Metrify_12(arguments.val, arguments.in_units, arguments.out_units);
    std::string text = Rendered(*record);
    xlAutoFree12(record);
    return text;
}

TEST(threads, eight_at_once_get_the_results_of_one) {
    constexpr int kCalls = 500;
    const PlainHost host;
    std::array<std::string, 8> alone;
    for (std::size_t i = 0; i < alone.size(); ++i)
        alone[i] = Called(kArguments[i]);
    std::array<int, 8> differences{};
    // The loader calls the module's entry for one thread at a time.
    std::mutex loader;
    std::vector<std::thread> threads;
    for (std::size_t own = 0; own < alone.size(); ++own) {
        threads.emplace_back([&, own] {
            for (int call = 0; call < kCalls; ++call) {
                // Each starts with a different conversion and runs all of them.
                const std::size_t i = (own + static_cast<std::size_t>(call)) % alone.size();
                if (Called(kArguments[i]) != alone[i])
                    ++differences[own];
            }
            const std::lock_guard lock(loader);
            ProcessEntry(nullptr, ProcessReason::thread_detach);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, (std::array<int, 8>{}));
}

} // namespace
