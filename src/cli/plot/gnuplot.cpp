#include "cli/plot/gnuplot.h"

#include "base/number_text.h"

#include <cmath>

namespace metrify {

namespace {

// In single quotes only the quote itself has a meaning, and twice it is a character.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text)
        result.append(c == '\'' ? 2 : 1, c);
    return result + "'";
}

void append_number(std::string& script, double value) {
    number_buffer buffer;
    script.append(std::isfinite(value) ? format_double(value, buffer) : "NaN");
}

} // namespace

std::string gnuplot_terminal(const std::string& file) {
    if (file.ends_with(".svg"))
        return "svg size 640,420 noenhanced font 'Helvetica,14' background '#ffffff'";
    if (file.ends_with(".png"))
        return "pngcairo size 960,630 noenhanced font 'Helvetica,14' background '#ffffff'";
    return {};
}

std::string gnuplot_script(const plot_data& data, const std::string& file) {
    std::string script = "set terminal " + gnuplot_terminal(file) + "\n";
    script += "set output " + quoted(file) + "\n";
    script += "set grid\nset key outside top center horizontal\n";
    script += "set xlabel " + quoted(data.x.label) + "\n";
    script += "set ylabel " + quoted(data.y_label()) + "\n";
    if (data.y.size() == 1)
        script += "unset key\n";
    script += "$data << END\n";
    for (std::size_t i = 0; i < data.x.values.size(); ++i) {
        append_number(script, data.x.values[i]);
        for (const plot_series& series : data.y) {
            script += ' ';
            append_number(script, series.values[i]);
        }
        script += '\n';
    }
    script += "END\nplot ";
    for (std::size_t k = 0; k < data.y.size(); ++k) {
        script += k > 0 ? ", " : "";
        script += "$data using 1:" + std::to_string(k + 2) + " with lines linewidth 2 title " +
                  quoted(data.y[k].label);
    }
    return script + "\n";
}

} // namespace metrify
