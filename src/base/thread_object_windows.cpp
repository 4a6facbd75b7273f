#include "base/thread_object.h"

#include <new>
#include <utility>
#include <windows.h>

namespace metrify {

namespace {

struct release_entry {
    void* object;
    void (*release)(void*);
    std::unique_ptr<release_entry> next;
};

// The slot's value is the list of the thread. The system passes it when the thread ends, and the lists of all
// threads when the slot is freed.
void WINAPI release_all(void* first) {
    std::unique_ptr<release_entry> entry(static_cast<release_entry*>(first));
    while (entry != nullptr) {
        entry->release(entry->object);
        entry = std::move(entry->next);
    }
}

class release_slot {
  public:
    release_slot() : key_(FlsAlloc(release_all)) {}
    ~release_slot() {
        if (key_ != FLS_OUT_OF_INDEXES)
            FlsFree(key_);
    }
    release_slot(const release_slot&) = delete;
    release_slot& operator=(const release_slot&) = delete;

    // A process whose slots are all in use is treated like one without memory.
    void add(void* object, void (*release)(void*)) {
        if (key_ == FLS_OUT_OF_INDEXES)
            throw std::bad_alloc();
        std::unique_ptr<release_entry> next(static_cast<release_entry*>(FlsGetValue(key_)));
        auto entry = std::make_unique<release_entry>(release_entry{object, release, std::move(next)});
        FlsSetValue(key_, entry.release());
    }

  private:
    DWORD key_;
};

release_slot slot;

} // namespace

void at_thread_end(void* object, void (*release)(void*)) {
    slot.add(object, release);
}

} // namespace metrify
