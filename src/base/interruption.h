#pragma once

// The end of a run at the request of its user. Long loops of the calculator ask is_interrupted() and return
// any value; the statement that is being run then fails with a message.

#include <atomic>
#include <cstdint>
#include <string_view>

namespace metrify {

constexpr std::string_view interruption_message = "ERROR: interrupted.\n";

/// A request to end a run. It can be made by another thread and by a signal handler.
class interruption {
  public:
    void request() { requested_.store(true, std::memory_order_relaxed); }
    void clear() { requested_.store(false, std::memory_order_relaxed); }
    bool is_requested() const { return requested_.load(std::memory_order_relaxed); }

  private:
    std::atomic<bool> requested_ = false;
    static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may store it");
};

/// The runs of the calling thread obey the request while the scope lives. Outside of any scope runs can't be
/// interrupted.
class interruption_scope {
  public:
    explicit interruption_scope(const interruption& obeyed);
    ~interruption_scope();
    interruption_scope(const interruption_scope&) = delete;
    interruption_scope& operator=(const interruption_scope&) = delete;

  private:
    const interruption* outer_;
};

/// True if the run of the calling thread is to end.
bool is_interrupted();

/// The same for a loop of short steps. Only one step in 4096 looks at the request.
inline bool is_interrupted_at(std::int64_t step) {
    return step % 4096 == 0 && is_interrupted();
}

} // namespace metrify
