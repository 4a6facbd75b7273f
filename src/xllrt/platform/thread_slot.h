#pragma once

// One pointer for each thread.

#include <cstdint>

namespace metrify {

class ThreadSlot {
  public:
    /// Called with a thread's pointer when the thread ends, on platforms that support it.
    using AtThreadEnd = void (*)(void*);

    /// Allocates a slot, in which every thread's pointer is null. False if the platform has none left. Does
    /// nothing if this has a slot already.
    bool Allocate(AtThreadEnd at_thread_end);

    /// Frees the slot, but not what the threads' pointers point at.
    void Release();

    /// The pointer of this thread; null without a slot.
    void* Get() const;

    /// Sets the pointer of this thread; false without a slot.
    bool Set(void* value) const;

  private:
    std::uint32_t key_ = 0;
    bool is_allocated_ = false;
};

} // namespace metrify
