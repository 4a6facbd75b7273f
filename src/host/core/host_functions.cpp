#include "host/core/host_functions.h"

#include <algorithm>
#include <iterator>

namespace metrify::host {

namespace {

// The contexts in which a function may be called.
enum class Access {
    everywhere, // also on calculation threads
    macros,     // in commands, and in functions with the rights of a macro sheet
    commands,
};

struct FunctionRow {
    int number;
    std::size_t min_arguments;
    std::size_t max_arguments;
    Access access;
    HostAnswer (*call)(const HostCall&);
};

constexpr std::size_t kMostArguments = RecordFamily<XLOPER12>::kMaxArguments;

constexpr FunctionRow functions[] = {
    {xlAbort, 0, 1, Access::everywhere, Abort},
    {xlCoerce, 1, 2, Access::everywhere, Coerce},
    {xlGetName, 0, 0, Access::everywhere, GetName},
    {xlGetHwnd, 0, 0, Access::everywhere, GetWindow},
    {xlfInfo, 1, 1, Access::everywhere, Info},
    {xlfGetWorkspace, 1, 1, Access::macros, GetWorkspace},
    {xlfActiveCell, 0, 0, Access::macros, ActiveCell},
    {xlfGetFormula, 1, 1, Access::macros, GetFormula},
    {xlfGetCell, 1, 2, Access::macros, GetCell},
    {xlfFormulaConvert, 2, 5, Access::macros, FormulaConvert},
    {xlfRegister, 2, kMostArguments, Access::commands, Register},
    {xlfUnregister, 1, 1, Access::commands, Unregister},
    {xlfSetName, 1, 2, Access::commands, SetName},
    {xlfAddMenu, 2, 4, Access::commands, AddMenu},
    {xlfAddCommand, 3, 5, Access::commands, AddCommand},
    {xlfDeleteMenu, 2, 3, Access::commands, DeleteMenu},
    {xlcFormula, 1, 2, Access::commands, EnterFormula},
    {xlcFormulaArray, 1, 2, Access::commands, EnterArrayFormula},
    {xlcAlert, 1, 3, Access::commands, ShowAlert},
    {xlcClose, 0, 2, Access::commands, CloseBook},
    {xlcNew, 0, 3, Access::commands, NewBook},
    {xlcEcho, 0, 1, Access::commands, SetEcho},
    {xlcFunctionWizard, 0, 0, Access::commands, OpenFunctionWizard},
};

// The code with which a call is refused in its context, or 0.
int RefusalOf(const FunctionRow& row, CallContext context) {
    if (row.access == Access::everywhere || context == CallContext::command)
        return xlretSuccess;
    if (context == CallContext::calculation_thread)
        return kRetNotThreadSafe;
    if (row.access == Access::macros)
        return context == CallContext::macro_function ? xlretSuccess : xlretInvXlfn;
    return (row.number & xlCommand) != 0 ? xlretFailed : xlretInvXlfn;
}

} // namespace

const CellValue& HostCall::Argument(std::size_t index) const {
    static const CellValue missing = MissingArgument{};
    return index < arguments.size() ? arguments[index] : missing;
}

HostAnswer CallHostFunction(HostState& state, int function, const std::vector<CellValue>& arguments,
                            CallContext context, bool is_wide) {
    const auto* row = std::find_if(
        std::begin(functions), std::end(functions),
        [number = WithoutOptions(function)](const FunctionRow& one) { return one.number == number; });
    if (row == std::end(functions))
        return HostAnswer::Code(xlretInvXlfn);
    if (const int refusal = RefusalOf(*row, context); refusal != xlretSuccess)
        return HostAnswer::Code(refusal);
    if (arguments.size() < row->min_arguments || arguments.size() > row->max_arguments)
        return HostAnswer::Code(xlretInvCount);
    return row->call({state, arguments, is_wide});
}

} // namespace metrify::host
