#pragma once

// Disables the leak check for memory that is leaked on purpose.

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace metrify {

/// While one exists, memory allocated by this thread may be leaked.
class IntendedLeaks {
  public:
#ifdef __SANITIZE_ADDRESS__
    IntendedLeaks() {
        __lsan_disable();
    }
    ~IntendedLeaks() {
        __lsan_enable();
    }
#else
    IntendedLeaks() {}
    ~IntendedLeaks() {}
#endif
    IntendedLeaks(const IntendedLeaks&) = delete;
    IntendedLeaks& operator=(const IntendedLeaks&) = delete;
};

} // namespace metrify
