#pragma once

// `metrify plot`: draws what the block of a program computes over a variable.

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace metrify {

struct plot_arguments {
    std::string over; ///< see plot_range
    std::vector<std::string> of;
    std::string output; ///< an .svg or .png file; text if empty
    std::size_t points = 201;
};

/// For the definitions see language/unit_definitions.h. Returns the exit status: 1 if the program has nothing
/// to draw, 2 for wrong arguments or a file that can't be drawn.
int plot_command(const std::string& program, const std::string& unit_definitions,
                 const plot_arguments& arguments, std::ostream& out, std::ostream& err);

} // namespace metrify
