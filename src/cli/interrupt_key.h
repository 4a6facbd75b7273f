#pragma once

// Ctrl-C while a program runs.

#include "base/interruption.h"

namespace metrify {

/// While it lives, Ctrl-C does not end the process but makes the request. At most one lives at a time.
class interrupt_key {
  public:
    explicit interrupt_key(interruption& requested);
    ~interrupt_key();
    interrupt_key(const interrupt_key&) = delete;
    interrupt_key& operator=(const interrupt_key&) = delete;

  private:
    void (*previous_)(int);
};

} // namespace metrify
