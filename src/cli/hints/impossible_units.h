#pragma once

// Units that the language cannot have.

#include <optional>
#include <string>
#include <string_view>

namespace metrify {

/// The reason why the language has no such unit, and what can be done instead.
std::optional<std::string> why_impossible(std::string_view name);

/// The sign of a currency at the start of a text, or nothing.
std::string_view currency_sign(std::string_view text);

} // namespace metrify
