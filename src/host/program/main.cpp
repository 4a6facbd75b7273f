// The metrify-sheet program.

#include "host/core/host.h"
#include "host/program/program_platform.h"
#include "host/program/sheet_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>

namespace metrify::host {
namespace {

constexpr int kWrongUsage = 2;
constexpr int kOldestRelease = 4;
constexpr int kNewestRelease = 16;
constexpr int kLastNarrowRelease = 11;
constexpr unsigned kMostThreads = 256;

int Serve(int release) {
    Host host(release);
    if (ServeOtherPrograms(host))
        return 0;
    std::cerr << "metrify-sheet: programs can't be found by others on this system\n";
    return kWrongUsage;
}

int Run(const std::vector<std::string>& arguments) {
    CLI::App app("Evaluates formulas with an add-in, as a spreadsheet does: one line for each row of a "
                 "result, its cells "
                 "separated by tabs.",
                 "metrify-sheet");
    app.set_version_flag("--version", "metrify-sheet " METRIFY_VERSION);

    SheetOptions options;
    options.module = ModuleBesideProgram();
    app.add_option("--module", options.module, "the add-in; otherwise the one beside this program");
    const CLI::Option* release =
        app.add_option("--release", options.release, "the version of the spreadsheet, 4 to 16; otherwise 15")
            ->check(CLI::Range(kOldestRelease, kNewestRelease));
    bool is_wide_wanted = false;
    bool is_narrow_wanted = false;
    app.add_flag("--wide", is_wide_wanted, "a spreadsheet that passes wide text, from version 12 on")
        ->excludes(app.add_flag("--narrow", is_narrow_wanted,
                                "one that passes narrow text, to version 11; otherwise 11"));
    app.add_option("--threads", options.threads, "calculate on so many threads")
        ->check(CLI::Range(1U, kMostThreads));
    app.add_option("--escape-after", options.escape_after_milliseconds,
                   "press Escape so many MILLISECONDS after the calculation has begun")
        ->type_name("MILLISECONDS");
    const CLI::Option* macro =
        app.add_option("--macro", options.macro,
                       "run a macro of the add-in's on a cell, which is empty or holds a FORMULA, and show "
                       "what it does");
    bool is_refused = false;
    app.add_flag("--refuse", is_refused, "answer the macro's questions with Cancel; otherwise with OK")
        ->needs("--macro");
    CLI::Option* formula = app.add_option(
        "FORMULA", options.formulas, "a formula with its =, or - for formulas on standard input, one a line");
    bool is_serving = false;
    app.add_flag("--serve", is_serving,
                 "a spreadsheet without add-in that other programs find, until its window is closed")
        ->excludes(formula);

    // The parser takes the arguments in reverse order, without the name of the program.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend() - 1);
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    if (!*formula && !*macro && !is_serving) {
        std::cerr << "metrify-sheet: a FORMULA is required\n";
        return kWrongUsage;
    }
    options.agrees = !is_refused;
    if (is_narrow_wanted && !*release)
        options.release = kLastNarrowRelease;
    const bool is_narrow = options.release <= kLastNarrowRelease;
    if ((is_narrow_wanted && !is_narrow) || (is_wide_wanted && is_narrow)) {
        std::cerr << "metrify-sheet: a spreadsheet of that version passes other text\n";
        return kWrongUsage;
    }
    if (is_serving)
        return Serve(options.release);
    return SheetCommand(options, std::cin, std::cout, std::cerr);
}

} // namespace
} // namespace metrify::host

int main(int argc, char** argv) {
    metrify::host::UseBinaryStreams();
    try {
        return metrify::host::Run(metrify::host::ProgramArguments(argc, argv));
    } catch (const std::exception& error) {
        std::cerr << "metrify-sheet: " << error.what() << '\n';
        return metrify::host::kWrongUsage;
    }
}
