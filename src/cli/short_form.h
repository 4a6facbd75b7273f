#pragma once

// The command line without the name of a command.

#include <string>
#include <vector>

namespace metrify {

/// True if all of the text is a number as in the language.
bool is_number(const std::string& text);

/// The words after `convert` in these arguments, without options.
std::vector<std::string> conversion_words(const std::vector<std::string>& arguments);

/// The arguments of metrify. If the first one after the options is a number or begins with a digit, perhaps
/// after a sign, `convert` is added before it. A fraction such as -.5 gets a zero before its point.
std::vector<std::string> with_convert_added(std::vector<std::string> arguments);

} // namespace metrify
