#include "base/numeric_utilities.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace metrify {

namespace {

thread_local int memory_failure_scopes = 0;

} // namespace

memory_failure_scope::memory_failure_scope() {
    ++memory_failure_scopes;
}

memory_failure_scope::~memory_failure_scope() {
    --memory_failure_scopes;
}

void nrerror(const char* text) {
    if (memory_failure_scopes != 0)
        throw std::bad_alloc();
    std::fputs("Numerical Recipes run-time error ...\n", stderr);
    std::fprintf(stderr, "%s\n", text);
    std::fputs("... now exiting to system ...\n\n", stderr);
    std::exit(1); // NOLINT(concurrency-mt-unsafe): the process ends here, whatever other threads do
}

namespace detail {

void block_release::operator()(void* block) const {
    ::operator delete(block);
}

void* allocate_block(long count, std::size_t size, const char* failure) {
    const std::size_t bytes = static_cast<std::size_t>(count) * size;
    const bool fits = count >= 0 && bytes / size == static_cast<std::size_t>(count);
    void* block = fits ? ::operator new(bytes, std::nothrow) : nullptr;
    if (block == nullptr)
        nrerror(failure);
    return block;
}

} // namespace detail
} // namespace metrify
