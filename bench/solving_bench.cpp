// Evaluations of a function block compared with plain C++, and whole searches with the share of their
// evaluations.

#include "bench/blocks.h"
#include "bench/bound_block.h"
#include "bench/hidden_number.h"
#include "bench/searches.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using namespace metrify;

void block(benchmark::State& state, bool has_units) {
    const auto statements = static_cast<std::size_t>(state.range(0));
    work_text err;
    bound_function& f = metrify_bench::bind_x_and_y(metrify_bench::block_program(statements, has_units));
    double x = 1.5;
    double y = 0.0;
    for (auto _ : state) {
        metrify_bench::hide(x);
        f.evaluate_function(&x, &y, err.str);
        metrify_bench::hide(y);
    }
    if (!str_is_empty(err.str))
        state.SkipWithError("the block fails");
    teardown_solver_binding();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(block, evaluate_function, false)->Arg(1)->Arg(4)->Arg(20);
BENCHMARK_CAPTURE(block, evaluate_function_with_units, true)->Arg(1)->Arg(4)->Arg(20);

void plain_block(benchmark::State& state) {
    const auto statements = static_cast<std::size_t>(state.range(0));
    double x = 1.5;
    double y = 1.0;
    for (auto _ : state) {
        metrify_bench::hide(x);
        metrify_bench::plain_block(x, y, statements);
        metrify_bench::hide(y);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(plain_block)->Name("block/plain_cpp")->Arg(1)->Arg(4)->Arg(20);

/// The time of one of several repetitions, so that the clock's steps do not matter.
double seconds_of(const auto& operation) {
    constexpr int repetitions = 20;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < repetitions; ++i)
        operation();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count() / repetitions;
}

void measure(benchmark::State& state, const metrify_bench::search& problem) {
    problem.bind();
    work_text err;
    save_start_values(err.str);
    for (auto _ : state) {
        restore_start_values(err.str);
        problem.method(bound_block(), err.str);
    }
    if (!str_is_empty(err.str))
        state.SkipWithError("no solution");
    // The share is formed outside of the measured loop: the fastest whole search and the fastest evaluations.
    metrify_bench::recorded_evaluations evaluations;
    restore_start_values(err.str);
    problem.method(evaluations, err.str);
    const auto search_again = [&] {
        restore_start_values(err.str);
        problem.method(bound_block(), err.str);
    };
    double whole = seconds_of(search_again);
    double alone = seconds_of([&] { evaluations.repeat(); });
    for (double spent = 0.0; spent < 0.01; spent += whole) {
        whole = std::min(whole, seconds_of(search_again));
        alone = std::min(alone, seconds_of([&] { evaluations.repeat(); }));
    }
    state.counters["evaluations"] = static_cast<double>(evaluations.count());
    state.counters["share_of_evaluations"] = alone / whole;
    teardown_solver_binding();
}

void solve(benchmark::State& state) {
    measure(state, metrify_bench::solve_of(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(solve)->Arg(1)->Arg(2)->Arg(5)->Arg(10);

void fmin(benchmark::State& state) {
    measure(state, metrify_bench::minimum_of(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(fmin)->Arg(1)->Arg(2)->Arg(5);

} // namespace
