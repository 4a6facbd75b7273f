#pragma once

// What a user is told about each built-in function: the one source of `metrify functions` and of
// docs/functions.md.

#include <span>
#include <string>
#include <string_view>

namespace metrify {

struct help_row {
    std::string_view name;
    std::string_view arguments; // as they are written between the parentheses
    std::string_view what;      // one line
    std::string_view takes;     // the arguments' units
    std::string_view gives;     // the result's units
    std::string_view domain;
    std::string_view example; // a line of the language, or a program
    std::string_view answer;  // what the listing says behind the line, or a line of the report
};

struct help_family {
    std::string_view title;
    std::span<const help_row> rows;
};

/// All 89 functions, family by family.
std::span<const help_family> function_help();

/// The function of that name, whatever its case; null if there is none.
const help_row* find_function_help(std::string_view name);

/// One line: the call, and what it is.
std::string help_line(const help_row& row);

/// All that is known about a function, as Markdown that reads as plain text too.
std::string help_entry(const help_row& row);

/// The whole of docs/functions.md.
std::string help_document();

} // namespace metrify
