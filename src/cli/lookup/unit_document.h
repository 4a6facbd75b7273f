#pragma once

#include <string>

namespace metrify {

/// The whole of docs/units.md.
std::string unit_document();

} // namespace metrify
