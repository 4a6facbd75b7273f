#pragma once

// Where memory is lost on purpose, the leak check is told so.

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace metrify {

/// While one lives, what this thread allocates may be left behind.
class LeaksAreMeant {
  public:
#ifdef __SANITIZE_ADDRESS__
    LeaksAreMeant() {
        __lsan_disable();
    }
    ~LeaksAreMeant() {
        __lsan_enable();
    }
#else
    LeaksAreMeant() {}
    ~LeaksAreMeant() {}
#endif
    LeaksAreMeant(const LeaksAreMeant&) = delete;
    LeaksAreMeant& operator=(const LeaksAreMeant&) = delete;
};

} // namespace metrify
