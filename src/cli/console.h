#pragma once

// The terminal, the standard streams, and what the program is started with. On Windows texts are in UTF-8.

#include "cli/session/completion.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// Switches off newline conversion, and lets a Windows console show UTF-8.
void use_binary_streams();

/// The arguments of the program without its name.
std::vector<std::string> program_arguments(int argc, const char* const* argv);

/// A variable of the environment; empty if there is none.
std::string environment_variable(const char* name);

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
