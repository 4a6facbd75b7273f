#include "xllrt/value/thread_state.h"

#include "xllrt/platform/thread_slot.h"
#include "xllrt/value/return_record.h"

#include <memory>
#include <new>

namespace metrify {

namespace {

constinit ThreadSlot state_slot;

void DestroyState(void* state) {
    const std::unique_ptr<XlThreadState> last(static_cast<XlThreadState*>(state));
}

} // namespace

XlThreadState::XlThreadState() : return4(), return12() {
    missing.SetMissing();
}

XlThreadState::~XlThreadState() {
    ResetReturnRecord(return4);
    ResetReturnRecord(return12);
}

XlThreadState& ThisThreadState() {
    if (void* state = state_slot.Get())
        return *static_cast<XlThreadState*>(state);
    auto state = std::make_unique<XlThreadState>();
    if (!state_slot.Set(state.get()))
        throw std::bad_alloc();
    return *state.release();
}

bool AllocateThreadStates() {
    return state_slot.Allocate(DestroyState);
}

void ReleaseThreadStates() {
    state_slot.Release();
}

void DestroyThreadState() {
    DestroyState(state_slot.Get());
    state_slot.Set(nullptr);
}

} // namespace metrify
