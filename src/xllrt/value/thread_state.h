#pragma once

// What the runtime keeps for each thread that enters it.

#include "xllrt/value/xl_oper.h"

namespace metrify {

struct XlThreadState {
    XlThreadState();
    XlThreadState(const XlThreadState&) = delete;
    XlThreadState& operator=(const XlThreadState&) = delete;
    ~XlThreadState();

    XLOPER return4;       ///< what a narrow entry hands to the host
    XLOPER12 return12;    ///< what a wide entry hands to the host
    CXlOper staticResult; ///< a value that a common function may fill and return
    CXlOper missing;      ///< the omitted argument, for calls of the host
};

/// The state of this thread, made on first use. Throws std::bad_alloc without a slot.
XlThreadState& ThisThreadState();

/// Takes the slot that leads to the states: at process attach. False if the platform has none left.
bool AllocateThreadStates();

/// Gives the slot back: at process detach. The states of threads that still run are left as they are.
void ReleaseThreadStates();

/// Destroys the state of this thread, if it has one: at thread detach. Where the platform tells the end of
/// threads by itself, it need not be called.
void DestroyThreadState();

} // namespace metrify
