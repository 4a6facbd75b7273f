#pragma once

// The names that the calculator in use knows, and those that resemble a text.

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

bool is_unit_name(std::string_view name);
bool is_function_name(std::string_view name);
bool is_variable_name(std::string_view name);

/// All units: the vocabulary, then the user units.
std::vector<std::string> unit_names();
std::vector<std::string> function_names();

bool equal_nocase(std::string_view a, std::string_view b);
bool contains_nocase(std::string_view text, std::string_view part);

/// How many characters have to be inserted, deleted, replaced or swapped with their neighbour to get from one
/// text to the other, without regard to case.
std::size_t edit_distance(std::string_view a, std::string_view b);

/// The names that resemble the text, at most three, the nearest first and those that differ by at most one
/// character more. The shorter the text, the fewer names it resembles.
std::vector<std::string> nearest_names(std::string_view text, const std::vector<std::string>& names);

/// The names in backquotes, separated by commas.
std::string quoted_list(const std::vector<std::string>& names);

/// The text as one argument of a command, in quotes if it needs them.
std::string quoted_for_shell(std::string_view argument);

} // namespace metrify
