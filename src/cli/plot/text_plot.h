#pragma once

// A plot made of characters.

#include "cli/plot/plot_data.h"

#include <cstddef>
#include <string>

namespace metrify {

/// The plot area has the given size; axes and labels are around it.
std::string text_plot(const plot_data& data, std::size_t width, std::size_t height);

} // namespace metrify
