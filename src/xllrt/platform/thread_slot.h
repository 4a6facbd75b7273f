#pragma once

// One pointer for each thread.

#include <cstdint>

namespace metrify {

class ThreadSlot {
  public:
    /// Gets a thread's pointer at the thread's end, on platforms that tell it.
    using AtThreadEnd = void (*)(void*);

    /// Takes a slot of the platform, in which every thread's pointer is null. False if there is none left.
    /// Nothing happens if this has a slot already.
    bool Allocate(AtThreadEnd at_thread_end);

    /// Gives the slot back. What the threads' pointers point at stays.
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
