#pragma once

// Calls of the host that fail because somebody wants to see what an add-in does then.

#include <cstddef>
#include <map>

namespace metrify::host {

class FaultSwitch {
  public:
    /// The n-th call from now on fails; 0 counts without a failure.
    void FailCall(std::size_t n) {
        failing_ = n;
        calls_ = 0;
        is_counting_ = true;
    }
    void Stop() { is_counting_ = false; }

    /// Calls counted so far.
    std::size_t calls() const { return calls_; }

    /// Counts a call. True if it has to fail.
    bool IsCallFailing() { return is_counting_ && ++calls_ == failing_; }

    /// Every call of a function fails with this code; code 0 lets it work again.
    void Refuse(int function, int code) { refusals_[function] = code; }
    /// The code that calls of a function fail with, or 0.
    int RefusalOf(int function) const {
        const auto found = refusals_.find(function);
        return found != refusals_.end() ? found->second : 0;
    }

  private:
    bool is_counting_ = false;
    std::size_t failing_ = 0;
    std::size_t calls_ = 0;
    std::map<int, int> refusals_;
};

} // namespace metrify::host
