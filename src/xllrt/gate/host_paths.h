#pragma once

// The add-in's own path, as the host tells it, and its parts.

#include <string>

namespace metrify {

/// The host's path of the add-in; the empty text if it doesn't tell.
std::string GetHostPathText();

/// What stands behind the last backslash of a path; all of it if there is none.
std::string GetAddInFileName(const std::string& host_path);

/// The file name up to its first dot.
std::string GetAddInBaseName(const std::string& host_path);

/// What stands in front of the last backslash; the empty text if there is none.
std::string GetAddInDirectory(const std::string& host_path);

} // namespace metrify
