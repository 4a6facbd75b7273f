#pragma once

#include <string>

namespace metrify {

/// The file that this code was loaded from, as the system reports it; the empty text if that fails, or if the
/// path has more than 259 characters.
std::string ModulePath();

} // namespace metrify
