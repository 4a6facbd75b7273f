// The statements of a function block as compiled expressions of a parser library.

#include "bench/blocks.h"
#include "bench/hidden_number.h"

#include <benchmark/benchmark.h>
#include <deque>
#include <muParser.h>

namespace {

void block(benchmark::State& state) {
    double x = 1.5;
    double y = 1.0;
    std::deque<mu::Parser> statements(static_cast<std::size_t>(state.range(0)));
    for (mu::Parser& statement : statements) {
        statement.DefineVar("x", &x);
        statement.DefineVar("y", &y);
        statement.SetExpr(metrify_bench::statement_text);
        y = statement.Eval(); // compiles
    }
    for (auto _ : state) {
        metrify_bench::hide(x);
        for (const mu::Parser& statement : statements)
            y = statement.Eval();
        metrify_bench::hide(y);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(block)->Name("block/muparser")->Arg(1)->Arg(4)->Arg(20);

} // namespace
