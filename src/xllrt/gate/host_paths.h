#pragma once

// The add-in's own path, as the host tells it, and its parts.

#include "xllrt/value/xl_oper.h"

#include <string>

namespace metrify {

/// Asks the host for the path of the add-in. Gives the host's code.
int GetHostPath(CXlOper& path);

/// The path that `get_path` puts into a value, as text; the empty text if its code is not 0.
template <class GetPath>
std::string PathText(GetPath get_path) {
    CXlOper path;
    return get_path(path) == xlretSuccess ? path.ToText() : std::string();
}

/// The host's path of the add-in; the empty text if the host fails.
std::string GetHostPathText();

/// What stands behind the last backslash of a path; all of it if there is none.
std::string GetAddInFileName(const std::string& host_path);

/// The file name up to its first dot.
std::string GetAddInBaseName(const std::string& host_path);

/// What stands in front of the last backslash; the empty text if there is none.
std::string GetAddInDirectory(const std::string& host_path);

} // namespace metrify
