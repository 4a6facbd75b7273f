#pragma once

// State that belongs to a thread and owns memory. It is reached through a plain pointer and released by a
// hook of the platform: on Windows a thread's variables are gone by the time the destructors of those among
// them would run, so an object with a destructor must not be one of them.

#include <memory>

namespace metrify {

/// Has the calling thread release the object when it ends, or the module when it is unloaded. What was
/// announced last is released first.
void at_thread_end(void* object, void (*release)(void*));

/// The calling thread's own object of the type, made when it is first asked for.
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
