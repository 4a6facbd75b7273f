#pragma once

// The language of the host: the first of the module's languages that belongs to the host's country.

#include <cstdint>

namespace metrify {

/// The host's language; 0 if the module has none for the host's country, or if the host does not report its
/// country. Once found, it is stored.
std::uint16_t HostLanguage();

/// Discards the stored language. For a process that changes its host.
void ForgetHostLanguage();

} // namespace metrify
