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

/// What a call has besides its program or its conversion.
struct call_extras {
    std::string unit_definitions; // see language/unit_definitions.h
    bool everyday = false;        // the definitions include the everyday units
    bool hints = false;           // explain on the error stream what was not understood
    bool also = false;            // show a conversion in further units
};

/// Converts one number. Writes the two cells separated by a blank, or the error cell to err.
int convert_command(double val, std::string_view in_units, std::string_view out_units, std::ostream& out,
                    std::ostream& err, const call_extras& extras = {});

/// Runs each file as a separate program; `-`, or no file at all, is standard input. Writes the listings
/// unchanged. A file that can't be read is reported with the reason, and the others are still run.
int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out, std::ostream& err,
                const run_options& options = {}, const call_extras& extras = {});

/// Reports a VAL that is not a number; always 2.
int refuse_number(const std::string& val, std::string_view in_units, std::string_view out_units,
                  std::ostream& err, const call_extras& extras);

/// Reports a conversion with words that it doesn't have; always 2. All words are those that were typed.
int refuse_words(const std::vector<std::string>& unexpected, const std::vector<std::string>& all,
                 std::ostream& err, const call_extras& extras);

struct unit_search {
    std::string text;
    std::string like; // a unit expression, if it is not empty
    bool as_markdown = false;
};

/// Lists the units that are found; see cli/lookup/unit_list.h.
int units_command(const unit_search& search, std::ostream& out, std::ostream& err,
                  const call_extras& extras = {});

/// Lists the functions that are found; see cli/lookup/function_list.h.
int functions_command(std::string_view text, std::ostream& out, std::ostream& err);

/// Writes the whole description of the functions as Markdown.
int functions_document_command(std::ostream& out);

/// Flushes out and returns the status, or reports an error and returns 2 if not all output could be written.
int checked_output(int status, std::ostream& out, std::ostream& err);

/// Reads entries from the terminal until end of input and shows their listings.
int interactive_command(std::ostream& out, std::ostream& err, const call_extras& extras);

} // namespace metrify
