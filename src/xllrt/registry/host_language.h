#pragma once

// The language of the host: the first of the module's languages that belongs to the host's country.

#include <cstdint>

namespace metrify {

/// The host's language; 0 if the module has none for the host's country, or no host tells its country. The
/// country and the language are kept once found.
std::uint16_t HostLanguage();

/// Forgets what was found. For a process that changes its host.
void ForgetHostLanguage();

} // namespace metrify
