#include "host/state/call_log.h"

namespace metrify::host {

void CallLog::Start() {
    const std::lock_guard lock(mutex_);
    calls_.clear();
    is_on_ = true;
}

void CallLog::Stop() {
    is_on_ = false;
}

void CallLog::Note(int function, bool is_wide, const std::vector<CellValue>& arguments, int code,
                   const CellValue& result) {
    if (!is_on_.load(std::memory_order_relaxed))
        return;
    const std::lock_guard lock(mutex_);
    calls_.push_back({function, is_wide, arguments, code, code == xlretSuccess ? result : CellValue()});
}

std::vector<LoggedCall> CallLog::Calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

std::vector<LoggedCall> CallLog::CallsOf(int function) const {
    std::vector<LoggedCall> calls = Calls();
    std::erase_if(calls,
                  [function](const LoggedCall& call) { return WithoutOptions(call.function) != function; });
    return calls;
}

int WithoutOptions(int function) {
    constexpr int kPrompt = 0x1000;
    return function & ~(xlIntl | kPrompt);
}

} // namespace metrify::host
