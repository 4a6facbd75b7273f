#pragma once

// A conversion between two units, prepared once and applied to many numbers in full double precision.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace metrify {

/// y = x*slope + intercept. A plan does not refer to a calculator; threads may share it.
struct conversion_plan {
    double slope = 1.0;
    double intercept = -0.0; // the sum with -0.0 leaves every number as it is, -0.0 included
    std::string units;       // of the result, as a listing shows them

    double operator()(double x) const { return x * slope + intercept; }

    /// Converts each number. Both spans have the same size. They may be the same numbers, but must not
    /// overlap otherwise.
    void apply(std::span<const double> from, std::span<double> to) const;

    /// Converts count numbers that are from_step and to_step elements apart; a step may be negative or 0.
    void apply(const double* from, std::ptrdiff_t from_step, double* to, std::ptrdiff_t to_step,
               std::size_t count) const;
};

/// Makes the plan of a conversion with the user units and default units of the calculator in use. `from` is a
/// unit expression. `to` is one as well, or MKS, cgs, FPS or IPS, or empty for the default units. On failure
/// message is what a listing says about these units, and the plan is unchanged.
bool make_conversion_plan(std::string_view from, std::string_view to, conversion_plan& plan,
                          std::string& message);

} // namespace metrify
