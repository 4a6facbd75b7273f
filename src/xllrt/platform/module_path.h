#pragma once

#include <string>

namespace metrify {

/// The file this code was loaded from, in the system's own words; the empty text if it doesn't tell, or if
/// the path has more than 259 characters.
std::string ModulePath();

} // namespace metrify
