#pragma once

// The limit of nesting. The parser is recursive and must work on a stack of 256 KiB, whatever the length of
// the text.

#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// Nested parentheses, brackets and calls, counted separately for expressions and for unit expressions.
constexpr int max_nesting = 100;

constexpr std::string_view nesting_message =
    "ERROR: Cannot parse line -- parentheses and brackets are nested too deeply.\n";

inline void report_nesting(text_str*& err) {
    append(err, nesting_message);
}

/// Counts one level while it lives.
class nesting_level {
  public:
    explicit nesting_level(int& depth) : depth_(depth) { ++depth_; }
    ~nesting_level() { --depth_; }
    nesting_level(const nesting_level&) = delete;
    nesting_level& operator=(const nesting_level&) = delete;

    bool is_too_deep() const { return depth_ > max_nesting; }

  private:
    int& depth_;
};

} // namespace metrify
