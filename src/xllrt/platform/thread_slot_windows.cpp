#include "xllrt/platform/thread_slot.h"

#include <windows.h>

namespace metrify {

// The loader reports the end of a thread to the module's entry, which releases what the slot holds.
bool ThreadSlot::Allocate(AtThreadEnd /*at_thread_end*/) {
    if (!is_allocated_) {
        key_ = TlsAlloc();
        is_allocated_ = key_ != TLS_OUT_OF_INDEXES;
    }
    return is_allocated_;
}

void ThreadSlot::Release() {
    if (is_allocated_) {
        TlsFree(key_);
        is_allocated_ = false;
    }
}

void* ThreadSlot::Get() const {
    return is_allocated_ ? TlsGetValue(key_) : nullptr;
}

bool ThreadSlot::Set(void* value) const {
    return is_allocated_ && TlsSetValue(key_, value) != 0;
}

} // namespace metrify
