// The metrify command.

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/standard_input.h"
#include "cli/unit_choice.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

namespace metrify {
namespace {

constexpr int wrong_usage = 2;

// VAL must be a number as in the language.
bool is_number(const std::string& text, double& value) {
    return *read_double(text.c_str(), value) == '\0' && !text.empty();
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

int run(int argc, const char* const* argv) {
    CLI::App app(
        "A calculator with units.\n"
        "Without a command: an interactive session at a terminal, otherwise the same as `metrify run -`.",
        "metrify");
    app.set_version_flag("--version", "metrify " METRIFY_VERSION);
    app.require_subcommand(0, 1);

    std::string val;
    std::string in_units;
    std::string out_units;
    // A negative number is not an option.
    CLI::App* convert = app.add_subcommand("convert", "Convert a number from one unit expression to another");
    convert->prefix_command(false);
    convert->add_option("VAL", val, "the number")->required()->type_name("NUMBER");
    convert->add_option("IN", in_units, "the units it is in, e.g. \"kg m / s^2\"")->required();
    convert->add_option("OUT", out_units, "the units to convert it to; default units if omitted");

    std::vector<std::string> files;
    CLI::App* run_files = app.add_subcommand("run", "Run program texts, each independently");
    run_files->add_option("FILE", files, "a file, or - for standard input, which is the default");

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
    for (CLI::App* command : {&app, convert, run_files, units})
        add_unit_options(*command, chosen);
    for (CLI::App* command : {&app, convert, run_files})
        add_hint_options(*command, hints);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrong_usage;
    }
    const bool is_session = app.get_subcommands().empty() && is_interactive();
    if (is_session)
        add_own_units(chosen);
    if (!read_definitions(chosen, extras.unit_definitions, std::cerr) && !is_session)
        return wrong_usage;
    extras.everyday = chosen.everyday;
    extras.hints = hints.is_on();
    if (convert->parsed()) {
        double number = 0.0;
        if (!is_number(val, number))
            return refuse_number(val, in_units, out_units, std::cerr, extras);
        return convert_command(number, in_units, out_units, std::cout, std::cerr, extras);
    }
    if (units->parsed())
        return units_command(search, std::cout, std::cerr, extras);
    if (functions->parsed())
        return as_markdown ? functions_document_command(std::cout)
                           : functions_command(filter, std::cout, std::cerr);
    if (is_session)
        return interactive_command(std::cout, std::cerr, extras);
    standard_input_buffer buffer;
    std::istream standard_input(&buffer);
    return run_command(files, standard_input, std::cout, std::cerr, extras);
}

} // namespace
} // namespace metrify

int main(int argc, char** argv) {
    metrify::use_binary_streams();
    int status = metrify::wrong_usage;
    try {
        status = metrify::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "metrify: " << error.what() << '\n';
    }
    return metrify::checked_output(status, std::cout, std::cerr);
}
