#include "cli/interrupt_key.h"

#include <atomic>
#include <csignal>

namespace metrify {

namespace {

std::atomic<interruption*> requested_by_key = nullptr;
static_assert(std::atomic<interruption*>::is_always_lock_free, "the handler loads it");

void request_interruption(int signal) {
    (void)std::signal(signal, request_interruption); // some systems reset the action
    if (interruption* const requested = requested_by_key)
        requested->request();
}

} // namespace

interrupt_key::interrupt_key(interruption& requested) {
    requested_by_key = &requested;
    previous_ = std::signal(SIGINT, request_interruption);
}

interrupt_key::~interrupt_key() {
    (void)std::signal(SIGINT, previous_);
    requested_by_key = nullptr;
}

} // namespace metrify
