#pragma once

// The values that a plot shows.

#include "cli/plot/plot_data.h"
#include "cli/plot/plot_range.h"

#include <cstddef>
#include <string>
#include <vector>

namespace metrify {

/// Runs the program with the units of the definitions (see language/unit_definitions.h) and computes its
/// block at equal distances over the range. Returns an empty text, or the reason why there is nothing to
/// draw.
std::string sample_block(const std::string& program, const std::string& unit_definitions,
                         const plot_range& over, const std::vector<plot_request>& of, std::size_t points,
                         plot_data& data);

} // namespace metrify
