#include "host/program/sheet_command.h"

#include "host/core/host.h"
#include "host/core/macro_run.h"
#include "host/sheet/utf8.h"
#include "host/sheet/value_text.h"

#include <algorithm>
#include <chrono>
#include <istream>
#include <ostream>
#include <thread>

namespace metrify::host {

namespace {

constexpr int kFailure = 1;

void AppendLines(std::istream& input, std::vector<std::u16string>& formulas) {
    std::string line;
    while (std::getline(input, line)) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.empty())
            formulas.push_back(FromUtf8(line));
    }
}

std::vector<std::u16string> FormulasOf(const SheetOptions& options, std::istream& input) {
    std::vector<std::u16string> formulas;
    for (const std::string& formula : options.formulas)
        if (formula == "-")
            AppendLines(input, formulas);
        else
            formulas.push_back(FromUtf8(formula));
    return formulas;
}

void ReportAlerts(Host& host, std::ostream& errors) {
    for (const Alert& alert : host.state().alerts)
        errors << "metrify-sheet: alert: " << ToUtf8(alert.text) << '\n';
    host.state().alerts.clear();
}

bool OpenAddIn(Host& host, const std::string& module, std::ostream& errors) {
    std::string error;
    if (!host.Load(module, error)) {
        errors << "metrify-sheet: " << error << '\n';
        return false;
    }
    const bool is_open = host.CallEntryPoint("xlAutoOpen") == 1;
    ReportAlerts(host, errors);
    if (!is_open)
        errors << "metrify-sheet: the add-in did not open\n";
    return is_open;
}

int WriteValues(Host& host, const std::vector<std::u16string>& formulas, unsigned threads,
                std::ostream& output, std::ostream& errors) {
    const std::vector<std::optional<CellValue>> values = host.EvaluateAll(formulas, threads);
    int status = 0;
    for (std::size_t i = 0; i < formulas.size(); ++i) {
        if (!values[i]) {
            errors << "metrify-sheet: no formula: " << ToUtf8(formulas[i]) << '\n';
            status = kFailure;
        }
        output << RowsText(values[i].value_or(CellError{xlerrName}));
    }
    return status;
}

// Runs the macro for each formula, or for an empty cell if there is none.
int RunMacro(Host& host, const SheetOptions& options, std::vector<std::u16string> formulas,
             std::ostream& output, std::ostream& errors) {
    if (formulas.empty())
        formulas.emplace_back();
    const std::u16string macro = FromUtf8(options.macro);
    const auto is_run = [&](const std::u16string& formula) {
        return WriteMacroRun(host, macro, formula, options.agrees, output);
    };
    // On its own thread, so that the add-in's state of the thread is destroyed before the add-in is closed.
    bool are_run = false;
    std::jthread([&] { are_run = std::all_of(formulas.begin(), formulas.end(), is_run); }).join();
    if (!are_run)
        errors << "metrify-sheet: no macro: " << options.macro << '\n';
    return are_run ? 0 : kFailure;
}

} // namespace

int SheetCommand(const SheetOptions& options, std::istream& input, std::ostream& output,
                 std::ostream& errors) {
    Host host(options.release);
    if (!OpenAddIn(host, options.module, errors))
        return kFailure;
    const std::vector<std::u16string> formulas = FormulasOf(options, input);
    if (options.escape_after_milliseconds)
        host.state().escape.PressAfter(std::chrono::milliseconds(*options.escape_after_milliseconds));
    const int status = options.macro.empty() ? WriteValues(host, formulas, options.threads, output, errors)
                                             : RunMacro(host, options, formulas, output, errors);
    host.CallEntryPoint("xlAutoClose");
    ReportAlerts(host, errors);
    return status;
}

} // namespace metrify::host
