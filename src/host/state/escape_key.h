#pragma once

// The key with which the user ends a calculation.

#include <atomic>
#include <chrono>

namespace metrify::host {

/// May be used by all threads.
class EscapeKey {
  public:
    void Press() { PressAfter(std::chrono::milliseconds(0)); }
    /// The key is pressed when the time is over.
    void PressAfter(std::chrono::milliseconds time) {
        pressed_at_ = (Clock::now() + time).time_since_epoch();
    }
    /// Removes the break, also one that is to come.
    void Clear() { pressed_at_ = kNever; }

    bool IsPressed() const { return Clock::now().time_since_epoch() >= pressed_at_.load(); }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr Clock::duration kNever = Clock::duration::max();

    std::atomic<Clock::duration> pressed_at_ = kNever;
};

} // namespace metrify::host
