#pragma once

// The table of the host's events: everything that differs from event to event.

#include "xllrt/app/xll_app.h"
#include "xllrt/event/host_event_number.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace metrify {

struct XlHostEventRow {
    XlHostEventNumber number;
    std::int32_t dispatch_id;   ///< in the host's event interface
    std::string_view signature; ///< a letter per argument: B workbook, S sheet, R range, F flag
    bool is_cancellable;        ///< the answer tells the host whether to cancel its operation

    /// Calls the application's operation for the event. The arguments match the signature.
    bool (*call)(CXllApp& application, std::span<const XlEventArgument> arguments);

    /// Notifies the observers; null for an event that has none. Returns true if an observer cancels.
    bool (*notify)(const CXlAppEvents& events, const CXlOper& first, const CXlOper& second);
};

/// Returns null for a number outside the table.
const XlHostEventRow* FindHostEvent(int number);

/// Returns null for an identifier that is not in the table.
const XlHostEventRow* FindHostEventByDispatchId(std::int32_t dispatch_id);

} // namespace metrify
