#include "host/core/macro_run.h"

#include "host/entry/calculation.h"
#include "host/formula/formula_conversion.h"
#include "host/sheet/utf8.h"

#include <ostream>

namespace metrify::host {

namespace {

// A formula with references in the A1 style.
std::string Shown(const HostState& state, const std::u16string& formula, CellPosition at) {
    const auto shown =
        ConvertFormulaText(formula, {ReferenceStyle::r1c1, at, state.books.size()}, ReferenceStyle::a1);
    return ToUtf8(shown.value_or(formula));
}

} // namespace

bool WriteMacroRun(Host& host, const std::u16string& macro, const std::u16string& content, bool agrees,
                   std::ostream& output) {
    HostState& state = host.state();
    const CellPosition at = state.books.ActiveCell().value_or(CellPosition{});
    EnterCells(state, {at.row, at.row, at.column, at.column}, content, ReferenceStyle::a1, false);
    const auto show_cell = [&] {
        const Sheet* const sheet = state.books.Active();
        output << "cell\t" << Shown(state, sheet ? sheet->FormulaText(at) : std::u16string(), at) << '\n';
    };
    show_cell();
    state.answers.assign(1, agrees);
    if (!host.RunCommand(macro))
        return false;
    for (const Alert& alert : state.alerts)
        output << "alert\t" << ToUtf8(alert.text) << '\t' << (alert.answer ? "OK" : "Cancel") << '\n';
    state.alerts.clear();
    for (const std::u16string& formula : state.wizard_openings)
        output << "wizard\t" << Shown(state, formula, at) << '\n';
    state.wizard_openings.clear();
    show_cell();
    return true;
}

} // namespace metrify::host
