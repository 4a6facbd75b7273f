#include "cli/plot/plot_command.h"

#include "cli/plot/gnuplot.h"
#include "cli/plot/plot_sampling.h"
#include "cli/plot/text_plot.h"

#include <ostream>

namespace metrify {

namespace {

constexpr int status_nothing_to_draw = 1;
constexpr int status_usage = 2;

int fail(std::ostream& err, const std::string& reason) {
    err << "metrify: " << reason << '\n';
    return status_usage;
}

int draw(const plot_data& data, const std::string& output, std::ostream& out, std::ostream& err) {
    constexpr std::size_t width = 64;
    constexpr std::size_t height = 20;
    if (output.empty())
        out << text_plot(data, width, height);
    else if (!run_gnuplot(gnuplot_script(data, output)))
        return fail(err,
                    output + ": gnuplot is missing or can't write it; without --output the plot is text");
    return 0;
}

} // namespace

int plot_command(const std::string& program, const std::string& unit_definitions,
                 const plot_arguments& arguments, std::ostream& out, std::ostream& err) {
    plot_range over;
    if (const std::string reason = over.read(arguments.over); !reason.empty())
        return fail(err, "--over '" + arguments.over + "' is no range such as 'x = 0 .. 10 m': " + reason);
    if (!arguments.output.empty() && gnuplot_terminal(arguments.output).empty())
        return fail(err, "--output " + arguments.output + ": the name must end in .svg or .png");
    constexpr std::size_t most_points = 100000;
    if (arguments.points < 2 || arguments.points > most_points)
        return fail(err,
                    "--points " + std::to_string(arguments.points) + ": it must be between 2 and 100000");
    const std::vector<plot_request> of(arguments.of.begin(), arguments.of.end());
    plot_data data;
    const std::string message = sample_block(program, unit_definitions, over, of, arguments.points, data);
    if (!message.empty()) {
        err << "metrify: " << message;
        return status_nothing_to_draw;
    }
    return draw(data, arguments.output, out, err);
}

} // namespace metrify
