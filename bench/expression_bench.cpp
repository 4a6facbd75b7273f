// The statements of a function block as compiled expressions of a parser library, alone and in turns with the
// block of the language.

#include "bench/blocks.h"
#include "bench/bound_block.h"
#include "bench/hidden_number.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <deque>
#include <limits>
#include <muParser.h>

namespace {

/// The statements of a block, compiled by the parser library.
class expressions {
  public:
    explicit expressions(std::size_t count) : statements_(count) {
        for (mu::Parser& statement : statements_) {
            statement.DefineVar("x", &x_);
            statement.DefineVar("y", &y_);
            statement.SetExpr(metrify_bench::statement_text);
            y_ = statement.Eval(); // compiles
        }
    }
    expressions(const expressions&) = delete;
    expressions& operator=(const expressions&) = delete;

    void evaluate() {
        metrify_bench::hide(x_);
        for (const mu::Parser& statement : statements_)
            y_ = statement.Eval();
        metrify_bench::hide(y_);
    }

  private:
    double x_ = 1.5;
    double y_ = 1.0;
    std::deque<mu::Parser> statements_;
};

void block(benchmark::State& state) {
    expressions compiled(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        compiled.evaluate();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(block)->Name("block/muparser")->Arg(1)->Arg(4)->Arg(20);

/// The nanoseconds of one of several evaluations.
double nanoseconds_of(const auto& evaluate) {
    constexpr int repetitions = 200;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < repetitions; ++i)
        evaluate();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count() /
           repetitions;
}

// The fastest of many turns of each, so that both have the same neighbours.
void block_ratio(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    metrify::bound_function& f = metrify_bench::bind_x_and_y(metrify_bench::block_program(count));
    expressions compiled(count);
    metrify::work_text err;
    double x = 1.5;
    double y = 0.0;
    double ours = std::numeric_limits<double>::max();
    double theirs = ours;
    for (auto _ : state) {
        for (int turn = 0; turn < 100; ++turn) {
            ours = std::min(ours, nanoseconds_of([&] {
                                metrify_bench::hide(x);
                                f.evaluate_function(&x, &y, err.str);
                                metrify_bench::hide(y);
                            }));
            theirs = std::min(theirs, nanoseconds_of([&] { compiled.evaluate(); }));
        }
    }
    metrify::teardown_solver_binding();
    state.counters["ns"] = ours;
    state.counters["ns_of_muparser"] = theirs;
    state.counters["ratio"] = ours / theirs;
}
BENCHMARK(block_ratio)->Arg(1)->Arg(4)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace
