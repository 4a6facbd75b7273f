#pragma once

// Whole searches of a block's variables x1, x2, ... by its values f1, f2, ..., and their evaluations alone.

#include "bench/blocks.h"
#include "bench/bound_block.h"
#include "numerics/solve/minimise.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/one_dim_root.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace metrify_bench {

struct search {
    std::string program;
    std::size_t independents, dependents;
    void (*method)(metrify::bound_function&, metrify::text_str*&);

    void bind() const {
        run_program(program);
        metrify::allocate_solver_binding(independents, dependents);
        for (std::size_t i = 0; i < independents; ++i)
            metrify::record_independent(i, numbered('x', i));
        for (std::size_t i = 0; i < dependents; ++i)
            metrify::record_dependent(i, numbered('f', i));
    }

  private:
    /// Indices start at 0, names at 1.
    static metrify::packed_reference numbered(char letter, std::size_t i) {
        return variable(letter + std::to_string(i + 1));
    }
};

/// A system of so many equations.
inline search solve_of(std::size_t pairs) {
    const auto by_broydn = [](metrify::bound_function& f, metrify::text_str*& err) {
        std::uint32_t check = 0;
        metrify::solve_multi_dim(f, check, true, err);
    };
    if (pairs == 1)
        return {system_program(pairs), pairs, pairs, metrify::solve_one_dim};
    return {system_program(pairs), pairs, pairs, by_broydn};
}

/// A minimum by so many variables.
inline search minimum_of(std::size_t variables) {
    return {valley_program(variables), variables, 1, metrify::minimise};
}

/// Passes the bound block's evaluations on and keeps their points.
class recorded_evaluations : public metrify::bound_function {
  public:
    long independents() const override { return metrify::bound_block().independents(); }
    long dependents() const override { return metrify::bound_block().dependents(); }
    bool is_negated() const override { return false; }
    void read_solver_vector(double* x, metrify::text_str*& err) const override {
        metrify::bound_block().read_solver_vector(x, err);
    }
    void evaluate_function(const double* x, double* y, metrify::text_str*& err) override {
        points_.insert(points_.end(), x, x + independents());
        metrify::bound_block().evaluate_function(x, y, err);
    }

    /// Evaluates at the same points once more, without the search.
    void repeat() const {
        const auto n = static_cast<std::size_t>(independents());
        std::vector<double> y(static_cast<std::size_t>(dependents()));
        metrify::work_text err;
        for (std::size_t i = 0; i < points_.size(); i += n)
            metrify::bound_block().evaluate_function(points_.data() + i, y.data(), err.str);
    }
    std::size_t count() const { return points_.size() / static_cast<std::size_t>(independents()); }

  private:
    std::vector<double> points_;
};

} // namespace metrify_bench
