#pragma once

// The call of a registered function or command.

#include "host/state/host_state.h"

namespace metrify::host {

/// Calls a registered function with values or references, turned into what its type text asks for. An
/// argument that cannot be turned gives its error, without a call. A result that the add-in marked as its own
/// goes back to the add-in, once.
CellValue CallRegistered(HostState& state, const Registration& registration,
                         const std::vector<CellValue>& arguments, CallContext context);

/// The value of a record that an add-in gave, which then goes back to its owner: to the add-in, by its
/// `xlAutoFree` or `xlAutoFree12`, what is marked as the add-in's, to the ledger what is marked as the
/// host's. `#NUM!` for a null pointer and for a record that is no value.
CellValue TakeResultRecord(HostState& state, XLOPER* record);
CellValue TakeResultRecord(HostState& state, XLOPER12* record);

/// The context that code of an add-in runs in on the calling thread.
CallContext CurrentContext();

/// Sets that context as long as it lives.
class ContextScope {
  public:
    explicit ContextScope(CallContext context);
    ~ContextScope();
    ContextScope(const ContextScope&) = delete;
    ContextScope& operator=(const ContextScope&) = delete;

  private:
    CallContext previous_;
};

} // namespace metrify::host
