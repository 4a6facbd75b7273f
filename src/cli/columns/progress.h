#pragma once

// The progress of a long conversion, on one line of a terminal that is written over.

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace metrify {

/// A bar with the share that is done, the rate and the time left. If the total is unknown (0), the rows and
/// the rate only.
std::string progress_line(std::uint64_t bytes, std::uint64_t total, std::uint64_t rows, double seconds);

class progress {
  public:
    /// Writes to the stream unless it is null.
    progress(std::ostream* terminal, std::uint64_t total);
    ~progress();
    progress(const progress&) = delete;
    progress& operator=(const progress&) = delete;

    /// Several times a second at most, the line is written again.
    void show(std::uint64_t bytes, std::uint64_t rows);

  private:
    using clock = std::chrono::steady_clock;

    std::ostream* terminal_;
    std::uint64_t total_;
    clock::time_point begin_ = clock::now();
    clock::time_point shown_ = begin_;
    bool is_shown_ = false;
};

} // namespace metrify
