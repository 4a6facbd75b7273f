#pragma once

#include <optional>
#include <string>

namespace metrify {

/// Runs a line on the calculator in use. The answer is what follows the first equals sign, such as `68 degF`.
/// None if the line fails, or if it could take long or record a block and is therefore not run.
std::optional<std::string> try_line(const std::string& line);

/// True if a line may be run for the sake of a hint.
bool is_harmless(const std::string& line);

} // namespace metrify
