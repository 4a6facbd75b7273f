#pragma once

// Pictures drawn by gnuplot.

#include "cli/plot/plot_data.h"

#include <string>

namespace metrify {

/// The terminal of gnuplot for a file with this name; empty if its ending is neither .svg nor .png.
std::string gnuplot_terminal(const std::string& file);

/// The commands that draw the data into the file.
std::string gnuplot_script(const plot_data& data, const std::string& file);

/// Runs the commands. False if gnuplot is missing or fails.
bool run_gnuplot(const std::string& script);

} // namespace metrify
