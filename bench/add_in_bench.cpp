// The add-in called by a host: a whole call compared with the floor, the least work that the task needs;
// calls on two threads compared with one; the time to open the add-in.

#include "bench/floors.h"
#include "bench/loaded_add_in.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <limits>
#include <memory>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using metrify::XLOPER12;
using metrify_bench::LoadedAddIn;

constexpr int kCallsPerTurn = 1000;

double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

// Processor time, which does not depend on other programs.
template <class Body>
double ProcessorTimeOf(Body body) {
    const std::clock_t start = std::clock();
    body();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

template <class Body>
double TimeOf(Body body) {
    const Clock::time_point start = Clock::now();
    body();
    return Seconds(Clock::now() - start);
}

// The time of one call in the fastest round, which excludes the time of other programs.
template <class Body>
void KeepQuickest(double& nanoseconds, Body call) {
    const double turn = ProcessorTimeOf([call] {
        for (int i = 0; i < kCallsPerTurn; ++i)
            call();
    });
    nanoseconds = std::min(nanoseconds, turn * 1e9 / kCallsPerTurn);
}

void whole_call(benchmark::State& state) {
    constexpr int kTurns = 200;
    LoadedAddIn add_in;
    double ours = std::numeric_limits<double>::max();
    double floor = ours;
    double asking = ours;
    for (auto _ : state) {
        // On a separate thread, since one that has called the function keeps the module loaded until it ends.
        std::jthread([&] {
            for (int i = 0; i < kTurns; ++i) {
                KeepQuickest(ours, [&] { add_in.Call(3.5, u"ft", u"m"); });
                KeepQuickest(floor, [] { metrify_bench::floor_of_call(3.5, u"ft", u"m"); });
                KeepQuickest(asking, [&] { add_in.AskRelease(); });
            }
        }).join();
    }
    state.counters["ns_per_call"] = ours;
    state.counters["ns_of_floor"] = floor;
    state.counters["ns_of_host"] = asking;
    state.counters["ratio"] = ours / (floor + asking);
    state.counters["ratio_without_host"] = (ours - asking) / floor;
}
BENCHMARK(whole_call)->Name("add_in/whole_call")->Unit(benchmark::kMillisecond);

/// The fastest times of the same work in one thread and in each of two.
struct ThreadTimes {
    double one = std::numeric_limits<double>::max();
    double two = one;

    template <class Work>
    void Measure(Work work) {
        one = std::min(one, TimeOf([&work] { const std::jthread first(work); }));
        two = std::min(two, TimeOf([&work] {
                           const std::jthread first(work);
                           const std::jthread second(work);
                       }));
    }
};

// The host counts its records in one ledger for all threads, so that its part is shown apart.
void two_threads(benchmark::State& state) {
    constexpr int kTurns = 10;
    constexpr int kCalls = 20 * kCallsPerTurn;
    LoadedAddIn add_in;
    ThreadTimes calls;
    ThreadTimes asking;
    for (auto _ : state) {
        for (int turn = 0; turn < kTurns; ++turn) {
            calls.Measure([&add_in] {
                for (int i = 0; i < kCalls; ++i)
                    add_in.Call(3.5, u"ft", u"m");
            });
            asking.Measure([&add_in] {
                for (int i = 0; i < kCalls; ++i)
                    add_in.AskRelease();
            });
        }
    }
    state.counters["times_one_thread"] = 2.0 * calls.one / calls.two;
    state.counters["times_one_thread_of_host"] = 2.0 * asking.one / asking.two;
    state.counters["times_one_thread_without_host"] =
        2.0 * (calls.one - asking.one) / (calls.two - asking.two);
}
BENCHMARK(two_threads)->Name("add_in/two_threads")->Unit(benchmark::kMillisecond);

// From loading the module to the end of the opening.
void load(benchmark::State& state) {
    for (auto _ : state) {
        std::unique_ptr<LoadedAddIn> add_in;
        state.SetIterationTime(TimeOf([&add_in] { add_in = std::make_unique<LoadedAddIn>(); }));
    }
}
BENCHMARK(load)->Name("add_in/load_to_open")->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
