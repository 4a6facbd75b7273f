#pragma once

// State of a thread that owns memory. It is accessed through a plain pointer and released by a callback of
// the platform: on Windows thread-local variables are released before their destructors would run, so none of
// them may have a destructor.

#include <memory>

namespace metrify {

/// Releases the object when the calling thread ends, or when the module is unloaded by this thread. The
/// object registered last is released first. Throws std::bad_alloc if memory is exhausted.
void at_thread_end(void* object, void (*release)(void*));

/// The calling thread's object of the type, created on first use.
template <class T>
T& thread_object() {
    static thread_local T* object = nullptr;
    if (object == nullptr) {
        auto made = std::make_unique<T>();
        at_thread_end(made.get(), [](void* it) { std::unique_ptr<T>(static_cast<T*>(it)).reset(); });
        object = made.release();
    }
    return *object;
}

} // namespace metrify
