#pragma once

#include <string>

namespace metrify {

/// The everyday units by subject with value, base units and source, and the abbreviations of the sources, as
/// in docs/units.md.
std::string everyday_tables();

} // namespace metrify
