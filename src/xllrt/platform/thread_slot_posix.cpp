#include "xllrt/platform/thread_slot.h"

#include <pthread.h>

namespace metrify {

static_assert(sizeof(pthread_key_t) == sizeof(std::uint32_t));

bool ThreadSlot::Allocate(AtThreadEnd at_thread_end) {
    if (!is_allocated_)
        is_allocated_ = pthread_key_create(&key_, at_thread_end) == 0;
    return is_allocated_;
}

void ThreadSlot::Release() {
    if (is_allocated_) {
        pthread_key_delete(key_);
        is_allocated_ = false;
    }
}

void* ThreadSlot::Get() const {
    return is_allocated_ ? pthread_getspecific(key_) : nullptr;
}

bool ThreadSlot::Set(void* value) const {
    return is_allocated_ && pthread_setspecific(key_, value) == 0;
}

} // namespace metrify
