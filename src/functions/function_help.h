#pragma once

// The list of built-in functions for users: `metrify functions` and docs/functions.md.

#include "functions/function_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct help_chapter {
    std::string_view title;
    std::vector<const function_row*> functions;
};

/// All 89 functions, chapter by chapter.
std::vector<help_chapter> function_help();

/// The function of that name, whatever its case; null if there is none.
const function_row* find_function_help(std::string_view name);

/// The heading of a list of lines.
std::string help_heading();

/// One line: the call, and what it is.
std::string help_line(const function_facts& function);

/// Everything known about a function, as Markdown that is also readable as plain text.
std::string help_entry(const function_facts& function);

/// The whole of docs/functions.md.
std::string help_document();

} // namespace metrify
