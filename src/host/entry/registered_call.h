#pragma once

// Calls of registered functions and commands.

#include "host/state/host_state.h"

namespace metrify::host {

/// Calls a registered function with values or references, converted to the types of its type text. If an
/// argument cannot be converted, its error is the result and the function is not called. A result whose
/// memory the add-in owns is returned to the add-in once.
CellValue CallRegistered(HostState& state, const Registration& registration,
                         const std::vector<CellValue>& arguments, CallContext context);

/// The value of a record that an add-in returned. The record is then released by its owner: by `xlAutoFree`
/// or `xlAutoFree12` of the add-in if it is marked as the add-in's, by the ledger if it is marked as the
/// host's. `#NUM!` for a null pointer and for a record without a value.
CellValue TakeResultRecord(HostState& state, XLOPER* record);
CellValue TakeResultRecord(HostState& state, XLOPER12* record);

/// The context in which the add-in runs on the calling thread.
CallContext CurrentContext();

/// Sets that context during its lifetime.
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
