#pragma once

// Fault injection: makes calls of the host fail, to test how an add-in reacts.

#include <cstddef>
#include <map>

namespace metrify::host {

class FaultSwitch {
  public:
    /// Makes the n-th call from now on fail; 0 only counts calls.
    void FailCall(std::size_t n) {
        failing_ = n;
        calls_ = 0;
        is_counting_ = true;
    }
    void Stop() { is_counting_ = false; }

    /// The number of calls counted so far.
    std::size_t calls() const { return calls_; }

    /// Counts a call. True if it must fail.
    bool IsCallFailing() { return is_counting_ && ++calls_ == failing_; }

    /// Makes every call of a function fail with this code; code 0 ends that.
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
