#pragma once

// The process's handlers of fault signals, while a guarded call needs them.

#include <csignal>

namespace metrify {

/// Is asked inside the handler what to do with a fault of its thread. Does not return if the fault is its
/// own affair.
using FaultTaker = void (*)(int signal, const siginfo_t& info);

/// While one of these lives, in any thread, SIGSEGV, SIGBUS, SIGFPE and SIGILL come to the taker first. What
/// it leaves goes on to the handler that was there before, as if that had been called by the system. With the
/// last one that goes, the earlier handlers are back; a handler that somebody else has put in between stays.
class FaultHandlerHold {
  public:
    explicit FaultHandlerHold(FaultTaker taker);
    FaultHandlerHold(const FaultHandlerHold&) = delete;
    FaultHandlerHold& operator=(const FaultHandlerHold&) = delete;
    ~FaultHandlerHold();
};

} // namespace metrify
