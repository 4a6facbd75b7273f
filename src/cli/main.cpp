// The metrify command.

#include "base/number_text.h"
#include "cli/columns/columns_command.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/plot/plot_command.h"
#include "cli/program_text.h"
#include "cli/short_form.h"
#include "cli/standard_input.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <sstream>

namespace metrify {
namespace {

constexpr int wrong_usage = status_unreadable;

// VAL must be a number as in the language.
std::string check_number(const std::string& text) {
    return is_number(text) ? std::string() : "'" + text + "' is not a number";
}

constexpr const char* about_forms =
    "A calculator with units.\n"
    "  metrify 3.5 ft m            convert a number, as `metrify convert 3.5 ft m` does\n"
    "  metrify -e 'x = 3 ft; in'   run a line\n"
    "  metrify                     an interactive session at a terminal, otherwise `metrify run -`";

constexpr const char* about_statuses =
    "Exit status:\n"
    "  0    success; also a run with statements that failed, unless --strict is given\n"
    "  1    an error cell, nothing found, nothing to draw, cells of `columns` that are\n"
    "       no numbers, or with --strict a statement that failed\n"
    "  2    wrong usage, input that can't be read, output that can't be written\n"
    "  130  interrupted by Ctrl-C\n";

/// The arguments of a run, whose options can also be given without the word `run`.
struct run_arguments {
    std::vector<std::string> files;
    std::vector<std::string> lines;
    run_options options;

    void add_options_to(CLI::App& app) {
        // A vector as the target would split a line in brackets.
        app.add_option_function<std::string>(
               "-e,--execute", [this](const std::string& line) { lines.push_back(line); },
               "run this line; several make one program")
            ->type_name("LINE")
            ->trigger_on_parse();
        app.add_flag("--strict", options.is_strict, "exit with 1 if a statement fails");
    }

    int run(std::istream& standard_input) const {
        if (lines.empty())
            return run_command(files, standard_input, std::cout, std::cerr, options);
        std::stringstream program;
        for (const std::string& line : lines)
            program << line << '\n';
        return run_command({}, program, std::cout, std::cerr, options);
    }
};

void add_columns_options(CLI::App& app, columns_arguments& columns) {
    app.add_option("--from", columns.from, "the units of the numbers")->required();
    app.add_option("--to", columns.to, "the units to convert them to; default units if omitted");
    app.add_option("-c,--columns", columns.options.columns,
                   "names or numbers of the columns, separated by commas; not needed for a single column");
    app.add_option("-d,--delimiter", columns.delimiter, "the character between cells; a comma if omitted");
    app.add_flag_callback(
        "--tsv", [&columns] { columns.delimiter = "\t"; }, "a tab is the delimiter");
    app.add_flag_callback(
        "--header", [&columns] { columns.options.header = true; },
        "the first row holds names; found out if omitted");
    app.add_flag_callback(
        "--no-header", [&columns] { columns.options.header = false; }, "it holds no names");
    app.add_flag("--json", columns.options.as_json, "write each row as one line of JSON");
    app.add_flag("--line-buffered", columns.options.is_line_buffered,
                 "write each row as soon as it has been read");
    app.add_option("FILE", columns.file, "a file, or - for standard input, which is the default");
}

void add_plot_options(CLI::App& app, plot_arguments& plot) {
    app.add_option("--over", plot.over, "the variable of the block and its range, e.g. 'x = 0 .. 10 m'")
        ->required();
    app.add_option_function<std::string>(
           "--of", [&plot](const std::string& request) { plot.of.push_back(request); },
           "a variable that the block computes, and its units, e.g. 'y; ft'; several make several lines")
        ->required()
        ->trigger_on_parse();
    app.add_option("-o,--output", plot.output, "an .svg or .png file, drawn by gnuplot; text if omitted");
    app.add_option("--points", plot.points, "the number of points")->capture_default_str();
}

int run(const std::vector<std::string>& arguments) {
    CLI::App app(about_forms, "metrify");
    app.footer(about_statuses);
    app.set_version_flag("--version", "metrify " METRIFY_VERSION);
    app.require_subcommand(0, 1);

    std::string val;
    std::string in_units;
    std::string out_units;
    // A negative number is not an option.
    CLI::App* convert = app.add_subcommand("convert", "Convert a number from one unit expression to another");
    convert->prefix_command(false);
    convert->add_option("VAL", val, "the number")->required()->check(CLI::Validator(check_number, "NUMBER"));
    convert->add_option("IN", in_units, "the units it is in, e.g. \"kg m / s^2\"")->required();
    convert->add_option("OUT", out_units, "the units to convert it to; default units if omitted");

    run_arguments program;
    program.add_options_to(app);
    CLI::App* run_files = app.add_subcommand("run", "Run program texts, each independently");
    program.add_options_to(*run_files);
    run_files->add_option("FILE", program.files, "a file, or - for standard input, which is the default")
        ->excludes("--execute");

    columns_arguments columns;
    CLI::App* of_columns =
        app.add_subcommand("columns", "Convert columns of a CSV file, or one number a line");
    add_columns_options(*of_columns, columns);

    plot_arguments plot;
    CLI::App* draw = app.add_subcommand("plot", "Draw what the block of a program computes");
    std::string plotted_file;
    draw->add_option("PROGRAM", plotted_file, "a program with a block, or - for standard input")->required();
    add_plot_options(*draw, plot);

    std::string filter;
    CLI::App* units = app.add_subcommand("units", "List the units: name, factor and dimension");
    units->add_option("TEXT", filter, "list only units whose name contains it");

    bool as_markdown = false;
    CLI::App* functions = app.add_subcommand("functions", "List the built-in functions, or show one of them");
    functions->add_option("TEXT", filter, "a name, or a text that the listed lines contain");
    functions->add_flag("--markdown", as_markdown, "write the whole reference as Markdown");

    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // the last one first
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrong_usage;
    }
    if (convert->parsed()) {
        double number = 0.0;
        read_double(val.c_str(), number);
        return convert_command(number, in_units, out_units, std::cout, std::cerr);
    }
    if (of_columns->parsed())
        return columns_command(columns);
    if (units->parsed())
        return units_command(filter, std::cout);
    if (functions->parsed())
        return as_markdown ? functions_document_command(std::cout) : functions_command(filter, std::cout);
    if (!run_files->parsed() && !draw->parsed() && program.lines.empty() && is_interactive())
        return interactive_command(std::cout);
    standard_input_buffer buffer;
    std::istream standard_input(&buffer);
    if (draw->parsed()) {
        program_text plotted;
        return plotted.read_named(plotted_file, standard_input, std::cerr)
                   ? plot_command(plotted.text, plot, std::cout, std::cerr)
                   : status_unreadable;
    }
    return program.run(standard_input);
}

} // namespace
} // namespace metrify

int main(int argc, char** argv) {
    metrify::use_binary_streams();
    int status = metrify::wrong_usage;
    try {
        status = metrify::run(metrify::with_convert_added({argv + 1, argv + argc}));
    } catch (const std::exception& error) {
        std::cerr << "metrify: " << error.what() << '\n';
    }
    return metrify::checked_output(status, std::cout, std::cerr);
}
