#pragma once

// Runs a program text and gives its listing.

#include "base/cursor.h"
#include "base/numeric_utilities.h"
#include "base/text_str.h"

#include <string>
#include <string_view>

namespace metrify {

/// A listing, terminated.
class listing {
  public:
    explicit listing(std::string_view text, bool has_failures = false);

    std::string_view view() const { return {text_.data(), length_}; }
    const char* c_str() const { return text_.data(); }
    /// True if a statement has shown a message.
    bool has_failures() const { return has_failures_; }
    char& operator[](std::size_t place) { return text_[static_cast<long>(place)]; }

  private:
    std::size_t length_;
    bool has_failures_;
    offset_vector<char> text_;
};

/// Runs a terminated program text on the calculator in use. An error in a line is shown in the listing and
/// does not end the run. The calculator is reset first; variables, user units and the function block are
/// released at the end. Only a pending report is kept: after a solving line that has failed, the next
/// statement that succeeds writes it, even in the next run of the thread. Threads may run programs at the
/// same time.
listing interpret_dimensional_input_lines(const char* text);

/// The same with user units that exist from the start; see language/unit_definitions.h. The listing does not
/// show them.
listing interpret_dimensional_input_lines(const char* text, const std::string& unit_definitions);

/// Runs the lines of a terminated text on the calculator in use without resetting it: statement
/// numbers continue, and variables, units and the block are those of the lines before.
listing run_further_lines(const char* text);

/// Runs the lines from the cursor to the end of its text, numbering statements from 1, and appends their
/// listing to out. The prefix precedes the numbers.
void run_lines(std::string_view prefix, cursor expptr, text_str*& out, text_str*& err);

} // namespace metrify
