#pragma once

// The terminal and the standard streams.

#include "cli/session/completion.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace metrify {

/// Switches off newline conversion.
void use_binary_streams();

/// True if standard input and standard output are a terminal.
bool is_interactive();

/// True if standard error is a terminal.
bool is_error_shown_to_person();

/// Reads lines from the terminal, with line editing and a persistent history if the platform provides them.
class line_reader {
  public:
    line_reader();
    ~line_reader();

    enum class outcome { line, interrupted, end };

    /// Gives the completion of a text that ends at the cursor.
    using completer = std::function<completion(std::string_view)>;
    void complete_with(completer complete);

    /// Reads one line, without its newline. If it is interrupted, line contains the text typed so far, which
    /// is also added to the history.
    outcome read(std::string_view prompt, std::string& line);

  private:
    struct terminal;
    std::unique_ptr<terminal> terminal_;
};

} // namespace metrify
