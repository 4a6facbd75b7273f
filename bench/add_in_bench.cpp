// The add-in called by a host: a whole call compared with the floor, the least work that the task needs;
// calls on two threads compared with one; the time to open the add-in.

#include "base/number_text.h"
#include "bench/loaded_add_in.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>
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

// ---- The floor

// Appends a text and returns its end.
template <class Target, class Source>
Target* Copied(Target* to, const Source* from, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i)
        to[i] = static_cast<Target>(from[i]);
    return to + length;
}

template <class Source>
char* Copied(char* to, const Source* text) {
    return Copied(to, text, std::char_traits<Source>::length(text));
}

// The least work of any implementation: the number is formatted into a line with both texts, read again and
// multiplied, and the answer is formatted; the result is an array of a number and a text, which are allocated
// and released.
void FloorCall(double val, const char16_t* in_units, const char16_t* out_units) {
    metrify::number_buffer digits;
    const std::string_view formatted = metrify::format_double(val, digits);
    char line[256];
    char* end = Copied(Copied(line, formatted.data(), formatted.size()), " ");
    *Copied(Copied(Copied(end, in_units), "; "), out_units) = '\0';
    benchmark::DoNotOptimize(line);
    double number = 0.0;
    metrify::read_double(line, number);

    metrify::number_buffer answer_digits;
    const std::string_view answer = metrify::format_double(number * 0.3048, answer_digits);
    char listing[512];
    end = Copied(Copied(listing, line), "\n = ");
    const char* const number_in_listing = end;
    *Copied(Copied(Copied(Copied(end, answer.data(), answer.size()), " "), out_units), "\n\n") = '\0';
    benchmark::DoNotOptimize(listing);

    const auto cells = std::make_unique<XLOPER12[]>(2);
    metrify::read_double(number_in_listing, cells[0].val.num);
    const std::size_t length = std::char_traits<char16_t>::length(out_units) + 2;
    const auto text = std::make_unique<char16_t[]>(length + 1);
    text[0] = static_cast<char16_t>(length);
    Copied(text.get() + 1, listing + std::strlen(listing) - length, length);
    cells[1].val.str = text.get();
    benchmark::DoNotOptimize(cells.get());
}

// The function must ask the host for its release and return the answer.
void AskRelease(metrify::host::Host& host) {
    char16_t text[] = u"\7Release";
    XLOPER12 item{};
    item.xltype = metrify::xltypeStr;
    item.val.str = text;
    XLOPER12* argument = &item;
    XLOPER12 release{};
    host.Call12(metrify::xlfInfo, &release, 1, &argument);
    XLOPER12* answer = &release;
    host.Call12(metrify::xlFree, nullptr, 1, &answer);
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
                KeepQuickest(floor, [] { FloorCall(3.5, u"ft", u"m"); });
                KeepQuickest(asking, [&] { AskRelease(add_in.host()); });
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

// The same number of calls in each thread.
void two_threads(benchmark::State& state) {
    constexpr int kTurns = 100;
    const LoadedAddIn add_in;
    const auto work = [&add_in] {
        for (int i = 0; i < kTurns * kCallsPerTurn; ++i)
            add_in.Call(3.5, u"ft", u"m");
    };
    double one = 0.0;
    double two = 0.0;
    for (auto _ : state) {
        one += TimeOf([&work] { const std::jthread first(work); });
        const double together = TimeOf([&work] {
            const std::jthread first(work);
            const std::jthread second(work);
        });
        two += together;
        state.SetIterationTime(together);
    }
    state.SetItemsProcessed(state.iterations() * kTurns * kCallsPerTurn * 2);
    state.counters["times_one_thread"] = 2.0 * one / two;
}
BENCHMARK(two_threads)->Name("add_in/two_threads")->UseManualTime()->Unit(benchmark::kMillisecond);

// From loading the module to the end of the opening.
void load(benchmark::State& state) {
    for (auto _ : state) {
        std::unique_ptr<LoadedAddIn> add_in;
        state.SetIterationTime(TimeOf([&add_in] { add_in = std::make_unique<LoadedAddIn>(); }));
    }
}
BENCHMARK(load)->Name("add_in/load_to_open")->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
