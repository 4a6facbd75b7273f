#pragma once

// The call of a module's export with arguments and a result that its type text describes.

#include "host/state/entry_type.h"
#include "xllrt/value/host_records.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace metrify::host {

/// One argument as the machine passes it.
using MachineWord = std::variant<double, std::int32_t, void*>;

/// What an entry gave back.
using EntryResult = std::variant<std::int32_t, XLOPER*, XLOPER12*>;

/// True if entries of that signature can be called.
bool IsCallable(std::string_view signature);

/// Calls an entry. The arguments must be as the signature, a callable one, has them.
EntryResult CallEntry(void* entry, std::string_view signature, std::span<const MachineWord> arguments);

} // namespace metrify::host
