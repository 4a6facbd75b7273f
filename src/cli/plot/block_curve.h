#pragma once

// The function block of a program as a function of one variable.

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// Belongs to the calculator in use, whose block must be closed. While it lives, the independent variable is
/// held.
class block_curve {
  public:
    block_curve() = default;
    ~block_curve();
    block_curve(const block_curve&) = delete;
    block_curve& operator=(const block_curve&) = delete;

    /// Chooses the variables. Returns an empty text, or a message.
    std::string bind(std::string_view independent, const std::vector<std::string>& dependents);

    /// The dependents at a value of the independent, all in units of the base system. Returns an empty text,
    /// or a message, with values that mean nothing.
    std::string evaluate(double x, std::vector<double>& y) const;
};

/// The units of a variable in the base system, as a unit expression; empty if it has none.
std::string base_units_of(std::string_view variable);

} // namespace metrify
