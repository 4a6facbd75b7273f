#pragma once

// The gate: all calls of the host are made here.
//
// Every operation returns the host's return code, and changes the result value only if that is 0; the host's
// memory in the result is returned to the host when the result is freed. A failure of the host throws
// nothing. Arguments of the wrong family are converted for the call; the result may be one of the arguments.

#include "xllrt/value/host_records.h"
#include "xllrt/value/xl_oper.h"

#include <array>
#include <cstdarg>
#include <span>

namespace metrify {

/// The gate's own return code, for a call that is impossible in the family: too many arguments for the
/// narrow one, an argument that it cannot represent, or a wide call to a host without the wide family.
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

/// As `Call`, with `count` pointers to `CXlOper` in a `va_list`.
int CallVa(CXlOper& result, int function, int count, std::va_list arguments);

/// As `Call`, without the result.
template <class... Opers>
int CallDiscard(int function, const Opers&... arguments) {
    CXlOper result;
    return Call(result, function, arguments...);
}

} // namespace metrify
