// One conversion through the function of the worksheet, compared with the floor, the least work that the task
// needs, and, if installed, with a units library that parses both unit texts on every call. Each pair of
// units is repeated, so that it is in the table, or runs its line.

#include "bench/floors.h"
#include "conversion/conversion.h"
#include "conversion/conversion_plan.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using metrify_bench::unit_pair;

using Convert = metrify::conversion (*)(double, std::string_view, std::string_view);

template <const auto& pairs, Convert convert>
void conversion(benchmark::State& state) {
    for (auto _ : state)
        for (const unit_pair& pair : pairs)
            benchmark::DoNotOptimize(convert(3.5, pair.from, pair.to));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(pairs)));
}
BENCHMARK(conversion<metrify_bench::simple_pairs, metrify::convert_units>)->Name("conversion/simple");
BENCHMARK(conversion<metrify_bench::compound_pairs, metrify::convert_units>)->Name("conversion/compound");
BENCHMARK(conversion<metrify_bench::simple_pairs, metrify::convert_units_by_line>)
    ->Name("conversion_by_line/simple");
BENCHMARK(conversion<metrify_bench::compound_pairs, metrify::convert_units_by_line>)
    ->Name("conversion_by_line/compound");

template <const auto& pairs>
void conversion_floor(benchmark::State& state) {
    for (auto _ : state)
        for (const unit_pair& pair : pairs)
            metrify_bench::floor_of_conversion(3.5, pair);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(pairs)));
}
BENCHMARK(conversion_floor<metrify_bench::simple_pairs>)->Name("conversion_floor/simple");
BENCHMARK(conversion_floor<metrify_bench::compound_pairs>)->Name("conversion_floor/compound");

using Clock = std::chrono::steady_clock;

template <class Body>
double seconds_of(Body body) {
    const Clock::time_point start = Clock::now();
    body();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// The time of the body in the fastest of several rounds, which excludes the time of other programs.
template <class Body>
void keep_quickest(double& seconds, Body body) {
    seconds = std::min(seconds, seconds_of(body));
}

// So many spellings of each pair that a conversion is not in the table any more when its turn comes again.
constexpr std::size_t spellings = 20;

// The pairs with different blanks after the first unit.
template <const auto& pairs>
std::vector<std::string> spelled_pairs() {
    std::vector<std::string> texts;
    for (std::size_t spelling = 0; spelling < spellings; ++spelling) {
        std::string blanks;
        for (std::size_t bits = spelling + 2; bits > 1; bits /= 2)
            blanks += bits % 2 != 0 ? ' ' : '\t';
        for (const unit_pair& pair : pairs)
            texts.push_back(pair.from + blanks);
    }
    return texts;
}

// Each way and the floor in turn, so that all have the same neighbours.
template <const auto& pairs>
void conversion_ratio(benchmark::State& state) {
    constexpr int rounds = 300;
    double floor = std::numeric_limits<double>::max();
    double repeated = floor;
    double first = floor;
    double by_line = floor;
    const std::vector<std::string> texts = spelled_pairs<pairs>();
    const auto all = [](auto convert) {
        for (std::size_t i = 0; i < spellings; ++i)
            for (const unit_pair& pair : pairs)
                convert(pair);
    };
    const auto convert_all = [&] {
        all([](const unit_pair& p) { benchmark::DoNotOptimize(metrify::convert_units(3.5, p.from, p.to)); });
    };
    const auto convert_all_by_line = [&] {
        all([](const unit_pair& p) {
            benchmark::DoNotOptimize(metrify::convert_units_by_line(3.5, p.from, p.to));
        });
    };
    const auto convert_new_texts = [&] {
        for (std::size_t text = 0; text < texts.size(); ++text) {
            const char* const to = pairs[text % std::size(pairs)].to;
            benchmark::DoNotOptimize(metrify::convert_units(3.5, texts[text], to));
        }
    };
    const auto floor_of_all = [&] {
        all([](const unit_pair& p) { metrify_bench::floor_of_conversion(3.5, p); });
    };
    for (auto _ : state) {
        for (int i = 0; i < rounds; ++i) {
            keep_quickest(floor, floor_of_all);
            convert_all(); // enters the pairs that the new texts have replaced
            keep_quickest(repeated, convert_all);
            keep_quickest(first, convert_new_texts);
            keep_quickest(by_line, convert_all_by_line);
        }
    }
    state.counters["ns_of_floor"] = floor * 1e9 / static_cast<double>(texts.size());
    state.counters["ratio_repeated"] = repeated / floor;
    state.counters["ratio_first"] = first / floor;
    state.counters["ratio_by_line"] = by_line / floor;
}
BENCHMARK(conversion_ratio<metrify_bench::simple_pairs>)
    ->Name("conversion_ratio/simple")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(conversion_ratio<metrify_bench::compound_pairs>)
    ->Name("conversion_ratio/compound")
    ->Unit(benchmark::kMillisecond);

// The same number of conversions in each thread.
void two_threads(benchmark::State& state) {
    const auto work = [] {
        for (int i = 0; i < 5000; ++i)
            for (const unit_pair& pair : metrify_bench::compound_pairs)
                benchmark::DoNotOptimize(metrify::convert_units(3.5, pair.from, pair.to));
    };
    double one = std::numeric_limits<double>::max();
    double two = one;
    for (auto _ : state) {
        for (int i = 0; i < 10; ++i) {
            keep_quickest(one, [&work] { const std::jthread first(work); });
            keep_quickest(two, [&work] {
                const std::jthread first(work);
                const std::jthread second(work);
            });
        }
    }
    state.counters["times_one_thread"] = 2.0 * one / two;
}
BENCHMARK(two_threads)->Name("conversion/two_threads")->Unit(benchmark::kMillisecond);

// The plain loop, compiled as well as it can be.
__attribute__((optimize("O3"), noinline)) void plain_loop(const double* from, double* to, std::size_t count,
                                                          double a, double b) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = from[i] * a + b;
}

// A column of numbers, in the cache and in memory.
void column(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    const std::vector<double> from(size, 20.0);
    std::vector<double> to(size);
    metrify::conversion_plan plan;
    std::string message;
    if (!metrify::make_conversion_plan("degC", "degF", plan, message))
        state.SkipWithError(message.c_str());
    double ours = std::numeric_limits<double>::max();
    double plain = ours;
    for (auto _ : state) {
        for (int i = 0; i < 20; ++i) {
            keep_quickest(ours, [&] { plan.apply(from, to); });
            benchmark::DoNotOptimize(to.data());
            keep_quickest(plain,
                          [&] { plain_loop(from.data(), to.data(), size, plan.slope, plan.intercept); });
            benchmark::DoNotOptimize(to.data());
        }
    }
    state.counters["ns_per_number"] = ours * 1e9 / static_cast<double>(size);
    state.counters["speed_of_plain_loop"] = plain / ours;
}
BENCHMARK(column)->Arg(1 << 14)->Arg(1 << 22)->Unit(benchmark::kMillisecond);

} // namespace
