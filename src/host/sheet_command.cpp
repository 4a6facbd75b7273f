#include "host/sheet_command.h"

#include "host/host.h"
#include "host/utf8.h"
#include "host/value_text.h"

#include <istream>
#include <ostream>

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
    for (const std::string& formula : options.formulas) {
        if (formula == "-")
            AppendLines(input, formulas);
        else
            formulas.push_back(FromUtf8(formula));
    }
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

} // namespace

int SheetCommand(const SheetOptions& options, std::istream& input, std::ostream& output,
                 std::ostream& errors) {
    Host host(options.release);
    if (!OpenAddIn(host, options.module, errors))
        return kFailure;
    const std::vector<std::u16string> formulas = FormulasOf(options, input);
    const std::vector<std::optional<CellValue>> values = host.EvaluateAll(formulas, options.threads);
    int status = 0;
    for (std::size_t i = 0; i < formulas.size(); ++i) {
        if (!values[i]) {
            errors << "metrify-sheet: no formula: " << ToUtf8(formulas[i]) << '\n';
            status = kFailure;
        }
        output << RowsText(values[i].value_or(CellError{xlerrName}));
    }
    host.CallEntryPoint("xlAutoClose");
    ReportAlerts(host, errors);
    return status;
}

} // namespace metrify::host
