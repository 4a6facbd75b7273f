#pragma once

// The terminal and the standard streams.

#include <memory>
#include <string>
#include <string_view>

namespace metrify {

/// Newlines go in and out as they are.
void use_binary_streams();

/// True if a person sits at both ends: standard input and standard output are a terminal.
bool is_interactive();

/// Reads lines from the terminal, with editing and a history kept from session to session where the platform
/// has them.
class line_reader {
  public:
    line_reader();
    ~line_reader();

    enum class outcome { line, interrupted, end };

    /// Reads one line, without its newline. When it is interrupted, line holds what had been typed, and it is
    /// in the history.
    outcome read(std::string_view prompt, std::string& line);

  private:
    struct terminal;
    std::unique_ptr<terminal> terminal_;
};

} // namespace metrify
