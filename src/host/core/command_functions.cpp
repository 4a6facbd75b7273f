// Functions for commands: menus, alerts, workbooks.

#include "host/core/host_functions.h"
#include "host/sheet/coercion.h"

namespace metrify::host {

namespace {

// The number of the worksheet menu bar.
constexpr double kWorksheetBar = 10.0;

bool IsWorksheetBar(const CellValue& bar) {
    return ToNumberValue(bar) == CellValue(kWorksheetBar);
}

HostAnswer NumberOrFailure(std::optional<int> number) {
    return number ? HostAnswer(CellValue(static_cast<double>(*number))) : HostAnswer::Code(xlretFailed);
}

HostAnswer TrueOrFailure(bool is_done) {
    return is_done ? HostAnswer(CellValue(true)) : HostAnswer::Code(xlretFailed);
}

} // namespace

// Arguments: bar, table, position; for a submenu bar, table, menu, position.
HostAnswer AddMenu(const HostCall& call) {
    if (!IsWorksheetBar(call.arguments[0]))
        return HostAnswer::Code(xlretFailed);
    MenuBar& menus = call.state.menus;
    const CellValue& table = call.arguments[1];
    return NumberOrFailure(call.IsMissing(3) ? menus.AddMenu(table, call.Argument(2))
                                             : menus.AddSubmenu(table, call.Argument(2), call.Argument(3)));
}

// Arguments: bar, menu, table, position; for a submenu bar, menu, table, submenu, position.
HostAnswer AddCommand(const HostCall& call) {
    if (!IsWorksheetBar(call.arguments[0]))
        return HostAnswer::Code(xlretFailed);
    const bool is_submenu = !call.IsMissing(4);
    const CellValue missing = MissingArgument{};
    return NumberOrFailure(call.state.menus.AddCommands(call.arguments[1], call.arguments[2],
                                                        is_submenu ? call.Argument(3) : missing,
                                                        is_submenu ? call.Argument(4) : call.Argument(3)));
}

// Arguments: bar, menu; for a submenu bar, menu, submenu.
HostAnswer DeleteMenu(const HostCall& call) {
    return TrueOrFailure(IsWorksheetBar(call.arguments[0]) &&
                         call.state.menus.Delete(call.arguments[1], call.Argument(2)));
}

// Arguments: text, type, help. Type 1, a question, has the buttons OK and Cancel; 2, an information, and 3, a
// warning, only OK.
HostAnswer ShowAlert(const HostCall& call) {
    constexpr std::int32_t kQuestion = 1;
    constexpr std::int32_t kInformation = 2;
    constexpr std::int32_t kWarning = 3;
    const CellValue text = ToTextValue(call.arguments[0]);
    const CellValue type =
        call.IsMissing(1) ? CellValue(kInformation) : ToIntegerValue(call.Argument(1), kQuestion, kWarning);
    if (!text.Is<std::u16string>() || !type.Is<std::int32_t>())
        return HostAnswer::Code(xlretFailed);
    std::deque<bool>& answers = call.state.answers;
    bool answer = true;
    if (*type.As<std::int32_t>() == kQuestion && !answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    }
    call.state.alerts.push_back({*text.As<std::u16string>(), *type.As<std::int32_t>(), answer});
    return answer;
}

HostAnswer CloseBook(const HostCall& call) {
    return TrueOrFailure(call.state.books.Close());
}

HostAnswer NewBook(const HostCall& call) {
    call.state.books.Open();
    return true;
}

// Without an argument, the setting is toggled.
HostAnswer SetEcho(const HostCall& call) {
    const CellValue echo = call.IsMissing(0) ? CellValue(!call.state.echo) : ToBoolValue(call.Argument(0));
    if (!echo.Is<bool>())
        return HostAnswer::Code(xlretFailed);
    call.state.echo = *echo.As<bool>();
    return true;
}

HostAnswer OpenFunctionWizard(const HostCall& call) {
    const auto at = call.state.books.ActiveCell();
    if (!at)
        return HostAnswer::Code(xlretFailed);
    call.state.wizard_openings.push_back(call.state.books.Active()->FormulaText(*at));
    return true;
}

} // namespace metrify::host
