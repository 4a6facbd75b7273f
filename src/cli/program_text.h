#pragma once

// The texts of programs as they are read from files and from standard input.

#include <iosfwd>
#include <string>

namespace metrify {

/// Reads a whole stream, without the byte order mark and the carriage returns that Windows programs add. A
/// note is set if there were any. On failure returns false and sets the reason.
struct program_text {
    std::string text;
    std::string note;
    std::string reason;

    bool read(std::istream& in);
    bool read_file(const std::string& file);
    /// Reads the file, or standard input for `-`. Writes the note or the reason to err.
    bool read_named(const std::string& file, std::istream& standard_input, std::ostream& err);
};

} // namespace metrify
