#include "base/build_settings.h"

namespace metrify {

// The macros are defined for this file alone.
constinit const std::string_view version = METRIFY_VERSION;
constinit const double last_supported_release = METRIFY_LAST_RELEASE;
constinit const std::string_view last_supported_release_text = METRIFY_LAST_RELEASE_TEXT;
constinit const std::string_view web_address = METRIFY_WEB_ADDRESS;

} // namespace metrify
