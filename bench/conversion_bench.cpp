// One conversion through the function of the worksheet, compared with the floor, the least work that the task
// needs, and, if installed, with a units library that parses both unit texts on every call.

#include "base/number_text.h"
#include "bench/unit_pairs.h"
#include "conversion/conversion.h"

#include <benchmark/benchmark.h>
#include <cstring>

namespace {

using metrify_bench::unit_pair;

template <const auto& pairs>
void conversion(benchmark::State& state) {
    for (auto _ : state)
        for (const unit_pair& pair : pairs)
            benchmark::DoNotOptimize(metrify::convert_units(3.5, pair.from, pair.to));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(pairs)));
}
BENCHMARK(conversion<metrify_bench::simple_pairs>)->Name("conversion/simple");
BENCHMARK(conversion<metrify_bench::compound_pairs>)->Name("conversion/compound");

// The least work of any implementation: the number is formatted into a line with both texts, read again and
// multiplied, and the answer is formatted.
template <const auto& pairs>
void conversion_floor(benchmark::State& state) {
    for (auto _ : state) {
        for (const unit_pair& pair : pairs) {
            double val = 3.5;
            benchmark::DoNotOptimize(val);
            metrify::number_buffer buffer;
            char line[256];
            const std::string_view digits = metrify::format_double(val, buffer);
            char* end = line;
            for (const std::string_view piece : {digits, std::string_view(" "), std::string_view(pair.from),
                                                 std::string_view("; "), std::string_view(pair.to)}) {
                std::memcpy(end, piece.data(), piece.size());
                end += piece.size();
            }
            *end = '\0';
            benchmark::DoNotOptimize(line);
            double number = 0.0;
            metrify::read_double(line, number);
            metrify::number_buffer answer;
            benchmark::DoNotOptimize(metrify::format_double(number * 0.3048, answer));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(pairs)));
}
BENCHMARK(conversion_floor<metrify_bench::simple_pairs>)->Name("conversion_floor/simple");
BENCHMARK(conversion_floor<metrify_bench::compound_pairs>)->Name("conversion_floor/compound");

} // namespace
