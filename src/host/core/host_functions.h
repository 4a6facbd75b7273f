#pragma once

// What the host does for each function number.

#include "host/state/host_state.h"

#include <concepts>

namespace metrify::host {

/// A call that the calling thread may not make.
inline constexpr int kRetNotThreadSafe = 128;

/// A return code of the host, and with code 0 a value.
struct HostAnswer {
    template <std::convertible_to<CellValue> Value>
    HostAnswer(Value given) : value(std::move(given)) {}

    /// A refusal.
    static HostAnswer Code(int code) {
        HostAnswer answer{CellValue()};
        answer.code = code;
        return answer;
    }

    int code = xlretSuccess;
    CellValue value;
};

/// A call as a function sees it.
struct HostCall {
    HostState& state;
    const std::vector<CellValue>& arguments;
    bool is_wide; ///< made in the wide family

    /// An argument; a missing one if it was left out.
    const CellValue& Argument(std::size_t index) const;
    bool IsMissing(std::size_t index) const { return Argument(index).Is<MissingArgument>(); }
};

/// Carries out a function, with its options in its number. `xlFree`, which is about records and not about
/// values, is none of them. Refused are a number that is none, with `xlretInvXlfn`, a wrong count of
/// arguments, with `xlretInvCount`, and what the calling code may not ask: on a calculation thread with
/// `kRetNotThreadSafe`, in a worksheet function with `xlretInvXlfn`, and commands in any function with
/// `xlretFailed`.
HostAnswer CallHostFunction(HostState& state, int function, const std::vector<CellValue>& arguments,
                            CallContext context, bool is_wide);

// The functions, in groups.

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
