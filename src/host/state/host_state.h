#pragma once

// The state of the host.

#include "host/sheet/workbook.h"
#include "host/state/add_in_module.h"
#include "host/state/call_log.h"
#include "host/state/escape_key.h"
#include "host/state/fault_switch.h"
#include "host/state/menu_bar.h"
#include "host/state/record_ledger.h"
#include "host/state/registration_table.h"
#include "xllrt/value/record_family.h"

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace metrify::host {

/// The kind of entry through which an add-in is called. It decides which functions the add-in may call.
enum class CallContext {
    calculation_thread, ///< a thread-safe function, possibly several at a time
    worksheet_function,
    macro_function, ///< a worksheet function registered with the rights of a macro sheet
    command,
};

struct Alert {
    std::u16string text;
    int type;
    bool answer;
    friend bool operator==(const Alert&, const Alert&) = default;
};

/// Results whose memory the add-in owns, and how many of them were returned to it.
struct ResultCounts {
    std::atomic<std::size_t> marked = 0;
    std::atomic<std::size_t> given_back = 0;
};

struct HostState {
    explicit HostState(int host_version);

    bool IsWide() const { return version >= RecordFamily<XLOPER12>::kFirstVersion; }

    int version;
    Workbooks books;
    RegistrationTable registrations;
    MenuBar menus;

    RecordLedger ledger;  ///< records handed to add-ins
    ResultCounts results; ///< records returned by add-ins
    CallLog log;
    FaultSwitch faults; ///< has no effect on calculation threads

    const AddInModule* module = nullptr;    ///< the loaded module, or null
    int running_commands = 0;               ///< calls of commands that have not returned
    std::unique_ptr<AddInModule> unloading; ///< a module that is unloaded when they have

    std::vector<CellValue> international; ///< the items of workspace information 37
    std::uint32_t window_handle = 0x0012ABCD;

    std::vector<Alert> alerts;                   ///< alerts shown so far
    std::deque<bool> answers;                    ///< to the next alerts; TRUE when empty
    std::vector<std::u16string> wizard_openings; ///< the formulas that the function wizard was opened with
    bool echo = true;
    EscapeKey escape;

    /// Held while a function runs that is not thread-safe.
    std::recursive_mutex main_thread;
};

} // namespace metrify::host
