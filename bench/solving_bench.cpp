// Evaluations of a function block compared with plain C++, and whole searches with the share of their
// evaluations.

#include "bench/blocks.h"
#include "bench/bound_block.h"
#include "bench/hidden_number.h"
#include "numerics/solve/minimise.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/one_dim_root.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using metrify_bench::run_program;
using metrify_bench::variable;

/// The name of a numbered variable. Indices start at 0, names at 1.
std::string numbered(const char* letter, std::size_t i) {
    return std::string(letter).append(std::to_string(i + 1));
}

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

/// Passes evaluations on and adds up the time they take.
class timed_block : public bound_function {
  public:
    long independents() const override { return bound_block().independents(); }
    long dependents() const override { return bound_block().dependents(); }
    bool is_negated() const override { return false; }
    void read_solver_vector(double* x, text_str*& err) const override {
        bound_block().read_solver_vector(x, err);
    }
    void evaluate_function(const double* x, double* y, text_str*& err) override {
        points_.insert(points_.end(), x, x + independents());
        bound_block().evaluate_function(x, y, err);
    }

    /// The time of the evaluations alone: at the same points, one after the other.
    double seconds_of_evaluations() const {
        const auto n = static_cast<std::size_t>(independents());
        std::vector<double> y(static_cast<std::size_t>(dependents()));
        work_text err;
        const auto begin = std::chrono::steady_clock::now();
        for (std::size_t i = 0; i < points_.size(); i += n)
            bound_block().evaluate_function(points_.data() + i, y.data(), err.str);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }
    std::size_t evaluations() const { return points_.size() / static_cast<std::size_t>(independents()); }

  private:
    std::vector<double> points_;
};

/// A search by the block's variables x1, x2, ... and the values f1, f2, ...
struct search {
    std::string program;
    std::size_t independents, dependents;
    void (*method)(bound_function&, text_str*&);

    void bind() const {
        run_program(program);
        allocate_solver_binding(independents, dependents);
        for (std::size_t i = 0; i < independents; ++i)
            record_independent(i, variable(numbered("x", i)));
        for (std::size_t i = 0; i < dependents; ++i)
            record_dependent(i, variable(numbered("f", i)));
    }
};

void measure(benchmark::State& state, const search& problem) {
    problem.bind();
    work_text err;
    save_start_values(err.str);
    for (auto _ : state) {
        restore_start_values(err.str);
        problem.method(bound_block(), err.str);
    }
    if (!str_is_empty(err.str))
        state.SkipWithError("no solution");
    // The share is formed outside of the measured loop: whole searches against their evaluations alone.
    constexpr int repetitions = 50;
    timed_block timed;
    restore_start_values(err.str);
    problem.method(timed, err.str);
    double whole = 0.0;
    double alone = 0.0;
    for (int i = 0; i < repetitions; ++i) {
        restore_start_values(err.str);
        const auto begin = std::chrono::steady_clock::now();
        problem.method(bound_block(), err.str);
        whole += std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        alone += timed.seconds_of_evaluations();
    }
    state.counters["evaluations"] = static_cast<double>(timed.evaluations());
    state.counters["share_of_evaluations"] = alone / whole;
    teardown_solver_binding();
}

void solve_by_broydn(bound_function& f, text_str*& err) {
    std::uint32_t check = 0;
    solve_multi_dim(f, check, true, err);
}

void solve(benchmark::State& state) {
    const auto pairs = static_cast<std::size_t>(state.range(0));
    measure(state, {metrify_bench::system_program(pairs), pairs, pairs,
                    pairs == 1 ? solve_one_dim : solve_by_broydn});
}
BENCHMARK(solve)->Arg(1)->Arg(2)->Arg(5)->Arg(10);

void fmin(benchmark::State& state) {
    const auto variables = static_cast<std::size_t>(state.range(0));
    measure(state, {metrify_bench::valley_program(variables), variables, 1, minimise});
}
BENCHMARK(fmin)->Arg(1)->Arg(2)->Arg(5);

} // namespace
