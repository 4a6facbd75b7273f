#pragma once

// A log of the calls that add-ins make, with their order, arguments and results.

#include "host/sheet/cell_value.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace metrify::host {

struct LoggedCall {
    int function; ///< with its options
    bool is_wide;
    std::vector<CellValue> arguments; ///< empty for `xlFree` and for a call refused before they were read
    int code;
    CellValue result; ///< empty unless the code is 0
    friend bool operator==(const LoggedCall&, const LoggedCall&) = default;
};

/// Calls of several threads are in the order in which they returned.
class CallLog {
  public:
    /// Starts an empty log.
    void Start();
    void Stop();

    void Note(int function, bool is_wide, const std::vector<CellValue>& arguments, int code,
              const CellValue& result);

    std::vector<LoggedCall> Calls() const;

    /// The calls of one function, options ignored.
    std::vector<LoggedCall> CallsOf(int function) const;

  private:
    mutable std::mutex mutex_;
    std::atomic<bool> is_on_ = false; // off by default, since calls are frequent
    std::vector<LoggedCall> calls_;
};

/// A function number without its options.
int WithoutOptions(int function);

} // namespace metrify::host
