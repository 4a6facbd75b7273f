#include "xllrt/value/thread_state.h"

#include "xllrt/platform/thread_slot.h"
#include "xllrt/value/return_record.h"

#include <memory>
#include <new>

namespace metrify {

namespace {

constinit ThreadSlot slot;

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
    if (void* state = slot.Get())
        return *static_cast<XlThreadState*>(state);
    auto state = std::make_unique<XlThreadState>();
    if (!slot.Set(state.get()))
        throw std::bad_alloc();
    return *state.release();
}

bool AllocateThreadStates() {
    return slot.Allocate(DestroyState);
}

void ReleaseThreadStates() {
    slot.Release();
}

void DestroyThreadState() {
    DestroyState(slot.Get());
    slot.Set(nullptr);
}

} // namespace metrify
