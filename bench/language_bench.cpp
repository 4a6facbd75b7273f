// Time of a run by the length of its program, and the replay of an instruction list compared with plain C++.

#include "language/assignment.h"
#include "language/driver.h"
#include "machine/evaluator.h"
#include "machine/variables.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

void program(benchmark::State& state) {
    std::string text;
    for (std::int64_t line = 0; line < state.range(0); ++line)
        text.append("v")
            .append(std::to_string(line))
            .append(" = ")
            .append(std::to_string(line % 100 + 1))
            .append(" ft\n");
    for (auto _ : state)
        benchmark::DoNotOptimize(metrify::interpret_dimensional_input_lines(text.c_str()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(program)->Name("program_lines")->Arg(100)->Arg(1000)->Arg(10000);

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
        metrify::eval_compiled_stck(result, list, numbers, ctx, err.str);
        benchmark::DoNotOptimize(result);
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
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(c);
        benchmark::DoNotOptimize((a + b) * c - a / b + c * (b - a) / 2 - b * c * 3 + a * 4);
    }
}
BENCHMARK(plain_expression)->Name("replay/plain_cpp");

} // namespace
