#pragma once

// The calculator's entry: a program text goes in, its listing comes out.

#include "base/cursor.h"
#include "base/numeric_utilities.h"
#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// A listing, terminated.
class listing {
  public:
    explicit listing(std::string_view text);

    std::string_view view() const { return {text_.data(), length_}; }
    const char* c_str() const { return text_.data(); }
    char& operator[](std::size_t place) { return text_[static_cast<long>(place)]; }

  private:
    std::size_t length_;
    offset_vector<char> text_;
};

/// Runs a terminated program text from its first line to its last. A failed line shows in the listing and
/// never ends the run. Variables, user units, default units and the function block live and die inside a run.
/// One thing goes on from a thread's run to its next one: a solving line that has failed leaves its report
/// due, and the next statement that succeeds writes it. Each thread may run a program of its own at any time.
listing interpret_dimensional_input_lines(const char* text);

/// Runs the lines of a terminated text on the calculator in use without resetting it: statements are numbered
/// on, and variables, units and the block are those of the lines before.
listing run_further_lines(const char* text);

/// Runs the lines from the cursor to the end of its text, numbering statements from 1, and appends their
/// listing to out. The prefix stands in front of the numbers.
void run_lines(std::string_view prefix, cursor expptr, text_str*& out, text_str*& err);

} // namespace metrify
