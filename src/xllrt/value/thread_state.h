#pragma once

// The state of the runtime for each thread that enters it.

#include "xllrt/value/xl_oper.h"

namespace metrify {

struct XlThreadState {
    XlThreadState();
    XlThreadState(const XlThreadState&) = delete;
    XlThreadState& operator=(const XlThreadState&) = delete;
    ~XlThreadState();

    XLOPER return4;       ///< the result of a narrow entry
    XLOPER12 return12;    ///< the result of a wide entry
    CXlOper staticResult; ///< a value that a common function may fill and return
    CXlOper missing;      ///< the missing argument, for calls of the host
};

/// The state of this thread, made on first use. Throws std::bad_alloc without a slot.
XlThreadState& ThisThreadState();

/// Allocates the slot with the states, at process attach. False if the platform has none left.
bool AllocateThreadStates();

/// Frees the slot, at process detach. The states of threads that still run are not destroyed.
void ReleaseThreadStates();

/// Destroys the state of this thread, if it has one, at thread detach. Need not be called where the platform
/// reports the end of threads by itself.
void DestroyThreadState();

} // namespace metrify
