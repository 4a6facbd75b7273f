#pragma once

// Answers of the host that are read from the record directly, before the gate can be used or without it.

#include "xllrt/value/host_link.h"
#include "xllrt/value/record_family.h"
#include "xllrt/value/record_reading.h"

#include <cstdint>
#include <optional>

namespace metrify {

/// The integer in an answer; nothing if it is of another type. What the answer points at is returned to the
/// host.
template <class Record>
std::optional<std::int32_t> TakeInteger(Record& answer) {
    std::int32_t value = 0;
    const bool is_read = RecordToInt(answer, value);
    if (PointsAtMemory(TypeOf(answer)))
        ReleaseToHost(answer);
    return is_read ? std::optional(value) : std::nullopt;
}

} // namespace metrify
