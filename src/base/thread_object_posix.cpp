#include "base/thread_object.h"

#include <new>
#include <pthread.h>

namespace metrify {

namespace {

struct release_entry {
    void* object;
    void (*release)(void*);
    release_entry* next;
};

// The key's value is the list of the thread. The system passes it when the thread ends.
void release_all(void* first) {
    std::unique_ptr<release_entry> entry(static_cast<release_entry*>(first));
    while (entry != nullptr) {
        entry->release(entry->object);
        entry.reset(entry->next);
    }
}

// A thread-local variable with a destructor would end the process if memory is exhausted when it is first
// used.
class release_key {
  public:
    release_key() : is_made_(pthread_key_create(&key_, release_all) == 0) {}
    // The lists of other threads are left to the end of the process.
    ~release_key() {
        if (!is_made_)
            return;
        void* const first = pthread_getspecific(key_);
        pthread_setspecific(key_, nullptr);
        release_all(first);
        pthread_key_delete(key_);
    }
    release_key(const release_key&) = delete;
    release_key& operator=(const release_key&) = delete;

    // A process whose keys are all in use is treated like one without memory.
    void add(void* object, void (*release)(void*)) {
        if (!is_made_)
            throw std::bad_alloc();
        auto* const next = static_cast<release_entry*>(pthread_getspecific(key_));
        auto entry = std::make_unique<release_entry>(release_entry{object, release, next});
        if (pthread_setspecific(key_, entry.get()) != 0)
            throw std::bad_alloc();
        entry.release(); // NOLINT(bugprone-unused-return-value): it belongs to the list now
    }

  private:
    pthread_key_t key_ = {};
    bool is_made_;
};

} // namespace

void at_thread_end(void* object, void (*release)(void*)) {
    static release_key key; // made on first use, so that loading the module runs nothing
    key.add(object, release);
}

} // namespace metrify
