#pragma once

// The functions that add-ins call by number.

#include "host/state/host_state.h"

#include <concepts>

namespace metrify::host {

/// The code for a function that is not allowed on a calculation thread.
inline constexpr int kRetNotThreadSafe = 128;

/// A return code, and with code 0 a value.
struct HostAnswer {
    template <std::convertible_to<CellValue> Value>
    HostAnswer(Value given) : value(std::move(given)) {}

    /// An answer without a value.
    static HostAnswer Code(int code) {
        HostAnswer answer{CellValue()};
        answer.code = code;
        return answer;
    }

    int code = xlretSuccess;
    CellValue value;
};

/// A call with its converted arguments.
struct HostCall {
    HostState& state;
    const std::vector<CellValue>& arguments;
    bool is_wide; ///< through the wide family

    /// An argument; the missing argument if it was omitted.
    const CellValue& Argument(std::size_t index) const;
    bool IsMissing(std::size_t index) const { return Argument(index).Is<MissingArgument>(); }
};

/// Calls a function other than `xlFree`. Options in its number are ignored. The call is refused
/// - with `xlretInvXlfn` for an unknown number,
/// - with `xlretInvCount` for a wrong number of arguments,
/// - if its context does not allow it: with `kRetNotThreadSafe` on a calculation thread, with `xlretFailed`
///   for a command in a function, and otherwise with `xlretInvXlfn`.
HostAnswer CallHostFunction(HostState& state, int function, const std::vector<CellValue>& arguments,
                            CallContext context, bool is_wide);

// The functions, by group.

/// True if Escape is pressed. With the argument FALSE, the break is also cleared, which is refused on
/// calculation threads.
HostAnswer Abort(const HostCall& call);
HostAnswer Coerce(const HostCall& call);
HostAnswer GetName(const HostCall& call);
HostAnswer GetWindow(const HostCall& call);
HostAnswer Info(const HostCall& call);
HostAnswer GetWorkspace(const HostCall& call);

HostAnswer ActiveCell(const HostCall& call);
HostAnswer GetFormula(const HostCall& call);
HostAnswer GetCell(const HostCall& call);
HostAnswer FormulaConvert(const HostCall& call);
HostAnswer EnterFormula(const HostCall& call);
HostAnswer EnterArrayFormula(const HostCall& call);

HostAnswer Register(const HostCall& call);
HostAnswer Unregister(const HostCall& call);
HostAnswer SetName(const HostCall& call);

HostAnswer AddMenu(const HostCall& call);
HostAnswer AddCommand(const HostCall& call);
HostAnswer DeleteMenu(const HostCall& call);

HostAnswer ShowAlert(const HostCall& call);
HostAnswer CloseBook(const HostCall& call);
HostAnswer NewBook(const HostCall& call);
HostAnswer SetEcho(const HostCall& call);
HostAnswer OpenFunctionWizard(const HostCall& call);

} // namespace metrify::host
