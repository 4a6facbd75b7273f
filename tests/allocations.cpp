#include "tests/allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;

void* counted(std::size_t bytes) {
    ++count;
    return std::malloc(bytes != 0 ? bytes : 1);
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

} // namespace metrify::test

// The forms for arrays call these.

void* operator new(std::size_t bytes) {
    return counted_or_throw(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return counted(bytes);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
