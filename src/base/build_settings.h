#pragma once

// What is chosen when Metrify is built: the version and the options of CMakeLists.txt.

#include <string_view>

namespace metrify {

extern const std::string_view version;

/// Later releases of the host are rejected. METRIFY_LAST_RELEASE, 15.0 unless chosen otherwise.
extern const double last_supported_release;
extern const std::string_view last_supported_release_text; // as the option has it

/// The address of the page about supported versions. METRIFY_WEB_ADDRESS.
extern const std::string_view web_address;

} // namespace metrify
