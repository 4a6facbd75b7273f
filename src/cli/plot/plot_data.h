#pragma once

// What a plot shows.

#include <string>
#include <vector>

namespace metrify {

struct plot_series {
    std::string label;          ///< with the units
    std::vector<double> values; ///< a not-a-number is a gap
};

struct plot_data {
    plot_series x;
    std::vector<plot_series> y; ///< as many values each as x

    /// The labels of all y, for their axis.
    std::string y_label() const;
};

} // namespace metrify
