#pragma once

// The call of a registered function or command.

#include "host/host_state.h"

namespace metrify::host {

/// Calls a registered function with values or references, turned into what its type text asks for. An
/// argument that cannot be turned gives its error, without a call. A result that the add-in marked as its own
/// goes back to the add-in, once.
CellValue CallRegistered(HostState& state, const Registration& registration,
                         const std::vector<CellValue>& arguments, CallContext context);

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
