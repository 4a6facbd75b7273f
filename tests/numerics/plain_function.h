#pragma once

// A function of plain numbers for the methods. It counts its evaluations and stores the points.

#include "numerics/solve/bound_function.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace metrify::test {

using point = std::vector<double>;

class plain_function : public bound_function {
  public:
    using formula = std::function<point(const point&)>;

    /// A formula that gives no values has failed.
    plain_function(point start, std::size_t values, formula f)
        : start_(std::move(start)), values_(values), formula_(std::move(f)) {}

    long independents() const override { return static_cast<long>(start_.size()); }
    long dependents() const override { return static_cast<long>(values_); }
    bool is_negated() const override { return negated; }

    void read_solver_vector(double* x, text_str*&) const override {
        for (const double number : start_)
            *x++ = number;
    }

    void evaluate_function(const double* x, double* y, text_str*& err) override {
        for (std::size_t i = 0; i < values_; ++i)
            y[i] = 0.0;
        if (!str_is_empty(err))
            return;
        points.emplace_back(x, x + start_.size());
        const point values = formula_(points.back());
        if (values.empty())
            err = str_append_text(&err, "evaluation failed");
        for (std::size_t i = 0; i < values.size(); ++i)
            y[i] = values[i];
    }

    double last(std::size_t i = 0) const { return points.back()[i]; }
    std::size_t evaluations() const { return points.size(); }

    std::vector<point> points; // in the order of evaluation
    bool negated = false;

  private:
    point start_;
    std::size_t values_;
    formula formula_;
};

/// A function of one number.
inline plain_function of_one(double start, const std::function<double(double)>& f) {
    return {{start}, 1, [f](const point& x) { return point{f(x[0])}; }};
}

/// The evaluation fails wherever the function gives this.
constexpr double fails_here = std::numeric_limits<double>::max();

/// A function of one number that can't be evaluated everywhere.
inline plain_function of_one_in_places(double start, const std::function<double(double)>& f) {
    return {{start},
            1,
            [f](const point& x) {
                const double y = f(x[0]);
                return y == fails_here ? point() : point{y};
            }};
}

/// The first coordinates of the points.
inline std::vector<double> places(const plain_function& f) {
    std::vector<double> found;
    for (const point& x : f.points)
        found.push_back(x[0]);
    return found;
}

} // namespace metrify::test
