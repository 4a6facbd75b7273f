#include "base/interruption.h"

namespace metrify {

namespace {

thread_local interruption_scope* scope_of_thread = nullptr;

} // namespace

interruption_scope::interruption_scope(interruption& obeyed, interruption_question question)
    : obeyed_(obeyed), question_(question), outer_(scope_of_thread) {
    scope_of_thread = this;
}

interruption_scope::~interruption_scope() {
    scope_of_thread = outer_;
}

bool interruption_scope::is_requested_after_question() {
    constexpr std::int64_t polls_per_clock_reading = 16;
    ++polls_;
    if (question_ == nullptr || is_requested() || polls_ % polls_per_clock_reading != 0)
        return is_requested();
    using clock = std::chrono::steady_clock;
    const clock::time_point now = clock::now();
    if (due_ == clock::time_point()) {
        due_ = now + question_interval;
    } else if (now >= due_) {
        if (question_())
            obeyed_.request();
        due_ = clock::now() + question_interval;
    }
    return is_requested();
}

bool is_interrupted() {
    return scope_of_thread != nullptr && scope_of_thread->is_requested();
}

bool is_interrupted_at_long_step() {
    return scope_of_thread != nullptr && scope_of_thread->is_requested_after_question();
}

} // namespace metrify
