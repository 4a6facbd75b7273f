#include "cli/plot/text_plot.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace metrify {

namespace {

constexpr std::string_view marks = "*+ox#@";

struct span_of_values {
    double least = std::numeric_limits<double>::infinity();
    double greatest = -std::numeric_limits<double>::infinity();

    void include(const plot_series& series) {
        for (const double value : series.values) {
            if (!std::isfinite(value))
                continue;
            least = std::min(least, value);
            greatest = std::max(greatest, value);
        }
    }

    // A curve that is constant is drawn in the middle.
    void widen_if_empty() {
        if (least < greatest)
            return;
        const double margin = least == 0.0 ? 1.0 : std::fabs(least) / 2.0;
        least -= margin;
        greatest += margin;
    }

    // The index of the cell of a value, from 0 on.
    std::size_t cell_of(double value, std::size_t cells) const {
        const double share = (value - least) / (greatest - least);
        return static_cast<std::size_t>(std::lround(share * static_cast<double>(cells - 1)));
    }
};

std::string number_text(double value) {
    number_buffer buffer;
    return std::string(format_double(value, buffer));
}

std::string right_aligned(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

} // namespace

std::string text_plot(const plot_data& data, std::size_t width, std::size_t height) {
    span_of_values x;
    span_of_values y;
    x.include(data.x);
    for (const plot_series& series : data.y)
        y.include(series);
    y.widen_if_empty();

    std::vector<std::string> rows(height, std::string(width, ' ')); // the lowest first
    for (std::size_t k = data.y.size(); k-- > 0;)                   // the first series on top
        for (std::size_t i = 0; i < data.x.values.size(); ++i)
            if (const double value = data.y[k].values[i]; std::isfinite(value))
                rows[y.cell_of(value, height)][x.cell_of(data.x.values[i], width)] = marks[k % marks.size()];

    const std::string top = number_text(y.greatest);
    const std::string bottom = number_text(y.least);
    const std::size_t margin = std::max(top.size(), bottom.size());
    std::string plot;
    for (std::size_t k = 0; k < data.y.size(); ++k)
        plot.append(1, marks[k % marks.size()]).append(" ").append(data.y[k].label).append("\n");
    for (std::size_t row = height; row-- > 0;) {
        const std::string label = row + 1 == height ? top : row == 0 ? bottom : std::string();
        std::string line = right_aligned(label, margin) + " |" + rows[row];
        line.erase(line.find_last_not_of(' ') + 1);
        plot += line + "\n";
    }
    plot += std::string(margin + 1, ' ') + "+" + std::string(width, '-') + "\n";
    const std::string left = number_text(data.x.values.front());
    const std::string right = number_text(data.x.values.back());
    const std::size_t between = width - std::min(width, left.size());
    plot += std::string(margin + 2, ' ') + left + right_aligned(right, between) + "\n";
    plot += std::string(margin + 2, ' ') + data.x.label + "\n";
    return plot;
}

} // namespace metrify
