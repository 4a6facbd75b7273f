#include "tests/allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;
thread_local std::ptrdiff_t live = 0;
thread_local std::ptrdiff_t until_failure = -1;
thread_local bool has_failed = false;

void* counted(std::size_t bytes) {
    ++count;
    if (until_failure >= 0 && until_failure-- == 0) {
        has_failed = true;
        return nullptr;
    }
    void* block = std::malloc(bytes != 0 ? bytes : 1);
    live += block != nullptr ? 1 : 0;
    return block;
}

void release(void* block) {
    live -= block != nullptr ? 1 : 0;
    std::free(block);
}

void* counted_or_throw(std::size_t bytes) {
    void* block = counted(bytes);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

} // namespace

namespace metrify::test {

std::size_t allocations() {
    return count;
}

void fail_allocation_after(std::ptrdiff_t others) {
    until_failure = others;
    has_failed = false;
}

bool has_failed_allocation() {
    return has_failed;
}

std::ptrdiff_t live_blocks() {
    return live;
}

} // namespace metrify::test

// The forms for arrays call these.

void* operator new(std::size_t bytes) {
    return counted_or_throw(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return counted(bytes);
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
