#pragma once

// The subcommands of metrify. Each writes to the given streams and returns the exit status.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

constexpr int status_failed = 1;     ///< an error cell, an empty list, a failed statement in a strict run
constexpr int status_unreadable = 2; ///< input that can't be read, output that is lost, wrong usage
constexpr int status_interrupted = 130;

struct run_options {
    bool is_strict = false; ///< a statement that fails makes the exit status 1
};

/// Converts one number. Writes the two cells separated by a blank, or the error cell to err.
int convert_command(double val, std::string_view in_units, std::string_view out_units, std::ostream& out,
                    std::ostream& err);

/// Runs each file as a separate program; `-`, or no file at all, is standard input. Writes the listings
/// unchanged. A file that can't be read is reported with the reason, and the others are still run.
int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out, std::ostream& err,
                const run_options& options = {});

/// Lists the units whose name contains the text: name, factor and dimension.
int units_command(std::string_view text, std::ostream& out);

/// Lists the call and the description of each function whose line contains the text in any case. If the text
/// is the name of a function, writes the whole help of that function.
int functions_command(std::string_view text, std::ostream& out);

/// Writes the whole description of the functions as Markdown.
int functions_document_command(std::ostream& out);

/// Flushes out and returns the status, or reports an error and returns 2 if not all output could be written.
int checked_output(int status, std::ostream& out, std::ostream& err);

/// Reads entries from the terminal until end of input and shows their listings.
int interactive_command(std::ostream& out);

} // namespace metrify
