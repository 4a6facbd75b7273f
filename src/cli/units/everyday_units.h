#pragma once

#include <string>

namespace metrify {

/// The text of everyday.units.
const std::string& everyday_units();

} // namespace metrify
