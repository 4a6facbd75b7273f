#pragma once

#include <filesystem>
#include <string>

namespace metrify {

/// The path of a file whose name is given in UTF-8 on Windows, and in the bytes of the system elsewhere.
inline std::filesystem::path path_of(const std::string& name) {
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

} // namespace metrify
