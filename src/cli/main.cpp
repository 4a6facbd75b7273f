// The metrify command.

#include "base/build_settings.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/standard_input.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

namespace metrify {
namespace {

constexpr int wrong_usage = 2;

std::string version_text() {
    std::string text = "metrify ";
    text.append(version).append("\nadd-in: Excel up to release ").append(last_supported_release_text);
    return text.append(", see ").append(web_address);
}

// VAL must be a number as in the language.
std::string check_number(const std::string& text) {
    double value = 0.0;
    const bool is_number = *read_double(text.c_str(), value) == '\0' && !text.empty();
    return is_number ? std::string() : "'" + text + "' is not a number";
}

int run(int argc, const char* const* argv) {
    CLI::App app(
        "A calculator with units.\n"
        "Without a command: an interactive session at a terminal, otherwise the same as `metrify run -`.",
        "metrify");
    app.set_version_flag("--version", version_text());
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

    std::vector<std::string> files;
    CLI::App* run_files = app.add_subcommand("run", "Run program texts, each independently");
    run_files->add_option("FILE", files, "a file, or - for standard input, which is the default");

    std::string filter;
    CLI::App* units = app.add_subcommand("units", "List the units: name, factor and dimension");
    units->add_option("TEXT", filter, "list only units whose name contains it");

    bool as_markdown = false;
    CLI::App* functions = app.add_subcommand("functions", "List the built-in functions, or show one of them");
    functions->add_option("TEXT", filter, "a name, or a text that the listed lines contain");
    functions->add_flag("--markdown", as_markdown, "write the whole reference as Markdown");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrong_usage;
    }
    if (convert->parsed()) {
        double number = 0.0;
        read_double(val.c_str(), number);
        return convert_command(number, in_units, out_units, std::cout, std::cerr);
    }
    if (units->parsed())
        return units_command(filter, std::cout);
    if (functions->parsed())
        return as_markdown ? functions_document_command(std::cout) : functions_command(filter, std::cout);
    if (!run_files->parsed() && is_interactive())
        return interactive_command(std::cout);
    standard_input_buffer buffer;
    std::istream standard_input(&buffer);
    return run_command(files, standard_input, std::cout, std::cerr);
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
