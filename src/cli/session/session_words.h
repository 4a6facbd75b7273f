#pragma once

// The commands of a session, and the keywords of the language that begin a line.

#include <array>
#include <string_view>

namespace metrify {

enum class session_command { none, help, quit, restart };

struct session_word {
    std::string_view word;
    session_command command;
};

/// The words without a colon are commands unless the user has defined the name.
constexpr std::array<session_word, 5> session_words = {{
    {":help", session_command::help},
    {":quit", session_command::quit},
    {":restart", session_command::restart},
    {"help", session_command::help},
    {"quit", session_command::quit},
}};

constexpr std::array<std::string_view, 8> line_keywords = {"DefUnit",   "FPS",   "IPS", "MKS",
                                                           "PrintFunc", "begin", "cgs", "end"};

} // namespace metrify
