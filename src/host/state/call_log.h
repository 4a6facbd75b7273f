#pragma once

// The calls that add-ins made, for whoever wants to compare their order and their arguments.

#include "host/sheet/cell_value.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace metrify::host {

struct LoggedCall {
    int function; ///< with its options
    bool is_wide;
    std::vector<CellValue> arguments; ///< none of a call of `xlFree`, or of one refused before they were read
    int code;
    CellValue result; ///< empty unless the code is 0
    friend bool operator==(const LoggedCall&, const LoggedCall&) = default;
};

/// Calls of several threads stand in it in the order of their ends.
class CallLog {
  public:
    /// Calls are noted from here on; those noted before are forgotten.
    void Start();
    void Stop();

    void Note(int function, bool is_wide, const std::vector<CellValue>& arguments, int code,
              const CellValue& result);

    std::vector<LoggedCall> Calls() const;

    /// The calls of one function, options left out of account.
    std::vector<LoggedCall> CallsOf(int function) const;

  private:
    mutable std::mutex mutex_;
    std::atomic<bool> is_on_ = false; // calls are many, and mostly nobody looks
    std::vector<LoggedCall> calls_;
};

/// A function number without its options.
int WithoutOptions(int function);

} // namespace metrify::host
