#pragma once

// The one gate through which the host is asked for anything.
//
// Every operation gives the host's return code, and changes the result value only if that is 0; what the
// result then holds goes back to the host when it is freed. Nothing is thrown for a failure of the host.
// Arguments of the wrong family are converted for the call; the result may stand among the arguments.

#include "xllrt/value/host_records.h"
#include "xllrt/value/xl_oper.h"

#include <array>
#include <cstdarg>
#include <span>

namespace metrify {

/// The gate's own return code, for a call that cannot be done in the family: too many arguments for the
/// narrow one, an argument that it cannot hold, a wide call to a host that has none.
inline constexpr int kRetWrongFamily = 256;

/// The family a call is made in.
enum class CallMode { narrow, wide, by_host_flag };

using OperPointers = std::span<const CXlOper* const>;

int CallArray(CXlOper& result, CallMode mode, int function, OperPointers arguments);

/// In the wide family; `kRetWrongFamily` on a host without it.
int CallArray12(CXlOper& result, int function, OperPointers arguments);
int CallArray12(CXlOper& result, int function, std::span<const CXlOper> arguments);

/// In the narrow family, whatever the host.
int Call4(CXlOper& result, int function, OperPointers arguments);
int Call4(CXlOper& result, int function, std::span<const CXlOper> arguments);

/// In the family of the host. The arguments are values or views of cells.
template <class... Opers>
int Call(CXlOper& result, int function, const Opers&... arguments) {
    const std::array<const CXlOper*, sizeof...(Opers)> list{&static_cast<const CXlOper&>(arguments)...};
    return CallArray(result, CallMode::by_host_flag, function, list);
}

int CallNoArgs(CXlOper& result, int function);

/// As `Call`, with `count` pointers to `CXlOper` in a list of the language's own kind.
int CallVa(CXlOper& result, int function, int count, std::va_list arguments);

/// As `Call`, for a result that nobody looks at.
template <class... Opers>
int CallDiscard(int function, const Opers&... arguments) {
    CXlOper result;
    return Call(result, function, arguments...);
}

} // namespace metrify
