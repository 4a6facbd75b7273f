#pragma once

// The process's handlers of fault signals, while a guarded call needs them.

#include <csignal>

namespace metrify {

/// Called inside the handler with a fault of its thread. Does not return if it handles the fault.
using FaultTaker = void (*)(int signal, const siginfo_t& info);

/// While an object of this class exists, in any thread, SIGSEGV, SIGBUS, SIGFPE and SIGILL are passed to the
/// taker first. If it returns, the earlier handler is called as the system would have called it. The last
/// object restores the earlier handlers when it is destroyed; a handler that was installed later by other
/// code stays.
class FaultHandlerHold {
  public:
    explicit FaultHandlerHold(FaultTaker taker);
    FaultHandlerHold(const FaultHandlerHold&) = delete;
    FaultHandlerHold& operator=(const FaultHandlerHold&) = delete;
    ~FaultHandlerHold();
};

} // namespace metrify
