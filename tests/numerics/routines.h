#pragma once

// Every routine of the special functions in a uniform form, for tests that iterate over all of them.

#include "base/text_str.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace metrify::test {

constexpr std::size_t most_arguments = 4;
constexpr std::size_t most_outputs = 4;

using routine_arguments = std::array<double, most_arguments>;
using routine_outputs = std::array<double, most_outputs>;

struct routine {
    std::string_view name;
    std::size_t arguments;
    std::size_t outputs;
    routine_outputs (*call)(const routine_arguments& x, text_str*& err);
    double bound;        // of the error, relative to the scale in the routine's table of exact values
    double stated_bound; // the same for the values of its required approximation
};

/// The bound for a routine without a required approximation.
constexpr double not_stated = -1.0;

std::span<const routine> all_routines();

/// The name of a test with a routine as its parameter. metrify-bench, which has no test framework, uses this
/// file too.
inline constexpr auto routine_name = [](const auto& tested) { return std::string(tested.param.name); };

} // namespace metrify::test
