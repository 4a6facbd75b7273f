#pragma once

// The host that the add-in sees within Gnumeric. Gnumeric loads the add-in, opens and closes it, knows its
// name and calls its functions; a stand-in host answers what Gnumeric does not know, such as its version.
//
// Gnumeric has only the narrow family and calls every function with 30 records. So the bridge registers a
// procedure of that kind, which calls the function of the add-in with the arguments that its type text
// declares. The version that the add-in is told decides which family it uses.

#include "host/core/host_functions.h"
#include "host/entry/entry_call.h"
#include "xllrt/gate/host_primitives.h"
#include "xllrt/value/record_memory.h"

#include <memory>
#include <span>
#include <vector>

namespace metrify::gnumeric {

class Bridge {
  public:
    static Bridge& Instance();

    /// Sets the entry with which Gnumeric answers calls of the narrow family.
    void SetGnumeric(Excel4vFunction entry) { gnumeric_ = entry; }

    /// Answers a call of the add-in. `result` may be null.
    int Call(int function, XLOPER* result, int count, XLOPER* const* arguments);
    int Call(int function, XLOPER12* result, int count, XLOPER12* const* arguments);

    /// Calls the worksheet function of the add-in for Gnumeric. The result is valid until the next call, and
    /// marked if Gnumeric has to give it back.
    XLOPER* CallFunction(std::span<XLOPER* const> arguments);

    /// Gives the result of the last call back to the add-in.
    void GiveBackResult();

  private:
    Bridge();

    template <class Record>
    int CallAny(int function, Record* result, int count, Record* const* arguments);
    host::HostAnswer Answer(int function, const std::vector<host::CellValue>& arguments, bool is_wide);
    host::HostAnswer AskGnumeric(int function, const std::vector<host::CellValue>& arguments);
    host::HostAnswer RegisterFunction(const std::vector<host::CellValue>& arguments, bool is_wide);
    void FindModule();
    void ShowAlerts();
    XLOPER* ReturnCopy(const host::CellValue& value);

    Excel4vFunction gnumeric_ = nullptr;
    host::HostState state_;
    std::unique_ptr<host::AddInModule> module_;
    const host::Registration* function_ = nullptr;
    host::EntryResult result_;     ///< the record that the add-in returned, until it is given back
    RecordOwner<XLOPER> returned_; ///< its copy for Gnumeric
};

} // namespace metrify::gnumeric
