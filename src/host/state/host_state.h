#pragma once

// Everything the stand-in host knows.

#include "host/sheet/workbook.h"
#include "host/state/add_in_module.h"
#include "host/state/call_log.h"
#include "host/state/fault_switch.h"
#include "host/state/menu_bar.h"
#include "host/state/record_ledger.h"
#include "host/state/registration_table.h"
#include "xllrt/value/record_family.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace metrify::host {

/// What code of an add-in is called as, which settles what it may ask of the host.
enum class CallContext {
    calculation_thread, ///< a thread-safe function, perhaps one of several at a time
    worksheet_function,
    macro_function, ///< a worksheet function registered to ask what macro sheets may ask
    command,
};

struct Alert {
    std::u16string text;
    int type;
    bool answer;
    friend bool operator==(const Alert&, const Alert&) = default;
};

/// Results that the add-in marked as its own, and how many of them went back to it.
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
    ResultCounts results; ///< records that add-ins handed over
    CallLog log;
    FaultSwitch faults; ///< not for calculation threads

    const AddInModule* module = nullptr; ///< the one whose code runs, or ran last

    std::vector<CellValue> international; ///< the items of workspace information 37
    std::uint32_t window_handle = 0x0012ABCD;

    std::vector<Alert> alerts;                   ///< those shown
    std::deque<bool> answers;                    ///< to the alerts to come; TRUE when they have run out
    std::vector<std::u16string> wizard_openings; ///< the formulas that the function wizard was opened on
    bool echo = true;

    /// Held while a function runs that may not run on several threads.
    std::recursive_mutex main_thread;
};

} // namespace metrify::host
