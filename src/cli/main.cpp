// The metrify command.

#include "base/build_settings.h"
#include "base/number_text.h"
#include "cli/columns/columns_command.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/plot/plot_command.h"
#include "cli/program_text.h"
#include "cli/short_form.h"
#include "cli/standard_input.h"
#include "cli/unit_choice.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <sstream>

namespace metrify {
namespace {

constexpr int wrong_usage = status_unreadable;

std::string version_text() {
    std::string text = "metrify ";
    text.append(version).append("\nadd-in: Excel up to release ").append(last_supported_release_text);
    return text.append(", see ").append(web_address);
}

// The options for units are the same for all commands that compute.
void add_unit_options(CLI::App& command, unit_choice& units) {
    command.add_flag("--everyday", units.everyday, "add units of everyday use, such as kWh, km/h or mpg");
    command.add_option("--units", units.files, "add the units of a file with DefUnit lines")
        ->type_name("FILE")
        ->allow_extra_args(false);
}

struct hint_choice {
    bool on = false;
    bool off = false;

    bool is_on() const { return !off && (on || is_error_shown_to_person()); }
};

void add_hint_options(CLI::App& command, hint_choice& hints) {
    command.add_flag("--hints", hints.on, "explain errors, even if standard error is no terminal");
    command.add_flag("--no-hints", hints.off, "do not explain errors");
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

    int run(std::istream& standard_input, const call_extras& extras) const {
        if (lines.empty())
            return run_command(files, standard_input, std::cout, std::cerr, options, extras);
        std::stringstream program;
        for (const std::string& line : lines)
            program << line << '\n';
        return run_command({}, program, std::cout, std::cerr, options, extras);
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
    app.set_version_flag("--version", version_text());
    app.require_subcommand(0, 1);

    std::string val;
    std::string in_units;
    std::string out_units;
    // A negative number is not an option.
    CLI::App* convert = app.add_subcommand("convert", "Convert a number from one unit expression to another");
    convert->prefix_command(false);
    convert->allow_extras(); // so that they can be explained
    convert->add_option("VAL", val, "the number")->required()->type_name("NUMBER");
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

    unit_search search;
    CLI::App* units =
        app.add_subcommand("units", "List the units: name, value of one, base units and quantity");
    units->add_option("TEXT", search.text,
                      "a part of a name in any case, a quantity such as pressure, or a unit");
    units->add_option("--like", search.like, "list the units of the same dimension")->type_name("UNIT");
    units->add_flag("--markdown", search.as_markdown, "write the whole page on units as Markdown");

    std::string filter;
    bool as_markdown = false;
    CLI::App* functions = app.add_subcommand("functions", "List the built-in functions, or show one of them");
    functions->add_option("TEXT", filter, "a name, or a text that the listed lines contain");
    functions->add_flag("--markdown", as_markdown, "write the whole reference as Markdown");

    unit_choice chosen;
    call_extras extras;
    hint_choice hints;
    convert->add_flag("--also", extras.also, "show the same quantity in further units");
    for (CLI::App* command : {&app, convert, run_files, units, of_columns, draw})
        add_unit_options(*command, chosen);
    for (CLI::App* command : {&app, convert, run_files, of_columns})
        add_hint_options(*command, hints);

    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // the last one first
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrong_usage;
    }
    const bool is_session = app.get_subcommands().empty() && program.lines.empty() && is_interactive();
    if (is_session)
        add_own_units(chosen);
    if (!read_definitions(chosen, extras.unit_definitions, std::cerr) && !is_session)
        return wrong_usage;
    extras.everyday = chosen.everyday;
    extras.hints = hints.is_on();
    const bool is_run = app.get_subcommands().empty() || run_files->parsed();
    if (!program.lines.empty() && (!is_run || !program.files.empty())) {
        std::cerr << "metrify: --execute goes with no file and with no command but run\n";
        return wrong_usage;
    }
    if (convert->parsed()) {
        if (convert->remaining_size() > 0)
            return refuse_words(convert->remaining(), conversion_words(arguments), std::cerr, extras);
        if (!is_number(val))
            return refuse_number(val, in_units, out_units, std::cerr, extras);
        double number = 0.0;
        read_double(val.c_str(), number);
        return convert_command(number, in_units, out_units, std::cout, std::cerr, extras);
    }
    if (of_columns->parsed())
        return columns_command(columns, extras.unit_definitions, {extras.hints, extras.everyday});
    if (units->parsed())
        return units_command(search, std::cout, std::cerr, extras);
    if (functions->parsed())
        return as_markdown ? functions_document_command(std::cout)
                           : functions_command(filter, std::cout, std::cerr);
    if (is_session)
        return interactive_command(std::cout, std::cerr, extras);
    standard_input_buffer buffer;
    std::istream standard_input(&buffer);
    if (draw->parsed()) {
        program_text plotted;
        return plotted.read_named(plotted_file, standard_input, std::cerr)
                   ? plot_command(plotted.text, extras.unit_definitions, plot, std::cout, std::cerr)
                   : status_unreadable;
    }
    return program.run(standard_input, extras);
}

} // namespace
} // namespace metrify

int main(int argc, char** argv) {
    metrify::use_binary_streams();
    int status = metrify::wrong_usage;
    try {
        status = metrify::run(metrify::with_convert_added(metrify::program_arguments(argc, argv)));
    } catch (const std::exception& error) {
        std::cerr << "metrify: " << error.what() << '\n';
    }
    return metrify::checked_output(status, std::cout, std::cerr);
}
