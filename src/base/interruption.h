#pragma once

// The end of a run at the request of its user. Long loops of the calculator call is_interrupted_at() and
// return any value; the statement that is being run then fails with a message.

#include <atomic>
#include <chrono>
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

/// Asks for a request that nothing reports by itself, such as a pressed key. True if the run is to end.
using interruption_question = bool (*)() noexcept;

/// The runs of the calling thread obey the request while the scope lives. Outside of any scope runs can't be
/// interrupted.
class interruption_scope {
  public:
    /// The question, if there is one, is asked in long loops, the first time when the run has lasted for
    /// `question_interval` and then again after each. The answer true makes the request.
    explicit interruption_scope(interruption& obeyed, interruption_question question = nullptr);
    ~interruption_scope();
    interruption_scope(const interruption_scope&) = delete;
    interruption_scope& operator=(const interruption_scope&) = delete;

    static constexpr std::chrono::milliseconds question_interval{50};

    bool is_requested() const { return obeyed_.is_requested(); }
    /// The same after the question, if that is due.
    bool is_requested_after_question();
    /// How often loops of long steps have polled the request.
    std::int64_t polls() const { return polls_; }

  private:
    interruption& obeyed_;
    const interruption_question question_;
    // The clock is read in loops only, and there rarely: short runs don't read it.
    std::int64_t polls_ = 0;
    std::chrono::steady_clock::time_point due_{};
    interruption_scope* const outer_;
};

/// True if the run of the calling thread is to end. Asks no question.
bool is_interrupted();

/// The same for a loop of long steps, which may ask the question.
bool is_interrupted_at_long_step();

/// The same for a loop of short steps. Only one step in 4096 polls the request.
inline bool is_interrupted_at(std::int64_t step) {
    return step % 4096 == 0 && is_interrupted_at_long_step();
}

/// The same for a step that takes so many short ones.
inline bool is_interrupted_after(std::int64_t steps) {
    return steps >= 4096 && is_interrupted_at_long_step();
}

} // namespace metrify
