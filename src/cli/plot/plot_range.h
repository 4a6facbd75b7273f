#pragma once

// The texts after --over and --of.

#include <string>
#include <string_view>

namespace metrify {

/// `x = 0 .. 10 m`
struct plot_range {
    std::string variable;
    double from = 0.0;
    double to = 0.0;
    std::string units; ///< of both; may be empty

    /// Returns an empty text, or the reason why the text is no range.
    std::string read(std::string_view text);
};

/// `y` or `y; ft`
struct plot_request {
    std::string variable;
    std::string units; ///< empty for the default units

    explicit plot_request(std::string_view text);
};

} // namespace metrify
