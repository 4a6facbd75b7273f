#include "base/thread_object.h"

#include <vector>

namespace metrify {

namespace {

struct release_entry {
    void* object;
    void (*release)(void*);
};

struct release_list {
    std::vector<release_entry> entries;

    release_list() = default;
    release_list(const release_list&) = delete;
    release_list& operator=(const release_list&) = delete;
    ~release_list() {
        for (; !entries.empty(); entries.pop_back())
            entries.back().release(entries.back().object);
    }
};

thread_local release_list list;

} // namespace

void at_thread_end(void* object, void (*release)(void*)) {
    list.entries.push_back({object, release});
}

} // namespace metrify
