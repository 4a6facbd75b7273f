#pragma once

// Marks intentional leaks for the leak check.

#ifdef METRIFY_FINDS_LEAKS
#include <sanitizer/lsan_interface.h>
#endif

namespace metrify {

/// During its lifetime, allocations of this thread are not reported as leaks.
class ExpectedLeaks {
  public:
#ifdef METRIFY_FINDS_LEAKS
    ExpectedLeaks() {
        __lsan_disable();
    }
    ~ExpectedLeaks() {
        __lsan_enable();
    }
#else
    ExpectedLeaks() {}
    ~ExpectedLeaks() {}
#endif
    ExpectedLeaks(const ExpectedLeaks&) = delete;
    ExpectedLeaks& operator=(const ExpectedLeaks&) = delete;
};

} // namespace metrify
