#pragma once

// Adapts the narrow entry with a variable argument list to the one that takes an array.

#include "xllrt/gate/host_primitives.h"
#include "xllrt/value/record_family.h"

#include <array>
#include <cstdarg>

namespace metrify::host {

/// Calls the entry with the `count` records of a list. `xlretInvCount` if there are too many.
inline int CallWithList(Excel4vFunction entry, int function, XLOPER* result, int count, std::va_list list) {
    constexpr int most = RecordFamily<XLOPER>::kMaxArguments;
    std::array<XLOPER*, most> arguments;
    if (count < 0 || count > most)
        return xlretInvCount;
    for (int i = 0; i < count; ++i)
        arguments[static_cast<std::size_t>(i)] = va_arg(list, XLOPER*);
    return entry(function, result, count, arguments.data());
}

} // namespace metrify::host
