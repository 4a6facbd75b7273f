#pragma once

// State of a thread that owns memory. It is accessed through a plain pointer and released by a callback of
// the platform: on Windows thread-local variables are released before their destructors would run, so none of
// them may have a destructor.

#include <memory>

namespace metrify {

/// Releases the object when the calling thread ends, or when the module is unloaded. The object registered
/// last is released first.
void at_thread_end(void* object, void (*release)(void*));

/// The calling thread's object of the type, created on first use.
template <class T>
T& thread_object() {
    static thread_local T* object = nullptr;
    if (object == nullptr) {
        object = std::make_unique<T>().release();
        at_thread_end(object, [](void* it) { std::unique_ptr<T>(static_cast<T*>(it)).reset(); });
    }
    return *object;
}

} // namespace metrify
