// The time of a line by the length of its program, and the replay of an instruction list compared with plain
// C++.

#include "bench/growing_programs.h"
#include "bench/hidden_number.h"
#include "language/assignment.h"
#include "language/driver.h"
#include "machine/evaluator.h"
#include "machine/variables.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <limits>
#include <string>

namespace {

double seconds_of_run(const std::string& text) {
    const auto begin = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(metrify::interpret_dimensional_input_lines(text.c_str()));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// The time of a line in a program of so many lines, compared with one of 100 lines, by the fastest runs.
void growth(benchmark::State& state, const metrify_bench::growing_program& kind) {
    constexpr long few = 100;
    const long many = state.range(0);
    const std::string short_program = kind.text(few);
    const std::string long_program = kind.text(many);
    double of_few = std::numeric_limits<double>::max();
    double of_many = of_few;
    for (auto _ : state) {
        for (int i = 0; i < 100; ++i)
            of_few = std::min(of_few, seconds_of_run(short_program) / few);
        of_many = std::min(of_many, seconds_of_run(long_program) / static_cast<double>(many));
    }
    state.counters["ns_per_line"] = of_many * 1e9;
    state.counters["times_of_100_lines"] = of_many / of_few;
}

const bool registered = [] {
    for (const metrify_bench::growing_program& kind : metrify_bench::growing_programs)
        benchmark::RegisterBenchmark(std::string("growth/").append(kind.name).c_str(),
                                     [&kind](benchmark::State& state) { growth(state, kind); })
            ->Arg(10000)
            ->Arg(100000)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

constexpr const char* expression_text = "(a + b) * c - a / b + c * (b - a) / 2 - b * c * 3 + a * 4";

void replay(benchmark::State& state) {
    metrify::work_text err;
    const auto define = [](const char* name, double number) {
        metrify::dim_value value;
        value.comp[0] = number;
        metrify::add_var(name, value);
    };
    define("a", 2.0);
    define("b", 3.0);
    define("c", 5.0);
    metrify::code_list list;
    metrify::cursor text(expression_text);
    metrify::dim_value result;
    metrify::compile_input_line(text, result, &list, err.str);
    metrify::number_program numbers;
    numbers.prepare(list);
    metrify::compile_ctx ctx;
    for (auto _ : state) {
        metrify::eval_compiled_stck(list, numbers, ctx, err.str);
        benchmark::DoNotOptimize(ctx.result);
    }
    metrify::free_all_vars();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(list.nodes().size()));
}
BENCHMARK(replay)->Name("replay/eval_compiled_stck");

void plain_expression(benchmark::State& state) {
    double a = 2.0;
    double b = 3.0;
    double c = 5.0;
    for (auto _ : state) {
        metrify_bench::hide(a);
        metrify_bench::hide(b);
        metrify_bench::hide(c);
        benchmark::DoNotOptimize((a + b) * c - a / b + c * (b - a) / 2 - b * c * 3 + a * 4);
    }
}
BENCHMARK(plain_expression)->Name("replay/plain_cpp");

} // namespace
