#pragma once

// Calls an export of a module with the arguments and the result that its type text declares.

#include "host/state/entry_type.h"
#include "xllrt/value/host_records.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace metrify::host {

/// One argument as it is passed by the calling convention.
using MachineWord = std::variant<double, std::int32_t, void*>;

/// The result of an entry.
using EntryResult = std::variant<std::int32_t, XLOPER*, XLOPER12*>;

/// True if entries with that signature can be called.
bool IsCallable(std::string_view signature);

/// Calls an entry. The signature must be callable, and the arguments must match it.
EntryResult CallEntry(void* entry, std::string_view signature, std::span<const MachineWord> arguments);

} // namespace metrify::host
