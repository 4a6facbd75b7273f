#include "xllrt/gate/host_paths.h"

#include "xllrt/gate/host_gate.h"

namespace metrify {

int GetHostPath(CXlOper& path) {
    return CallNoArgs(path, xlGetName);
}

std::string GetHostPathText() {
    return PathText(GetHostPath);
}

std::string GetAddInFileName(const std::string& host_path) {
    const std::size_t backslash = host_path.rfind('\\');
    return backslash == std::string::npos ? host_path : host_path.substr(backslash + 1);
}

std::string GetAddInBaseName(const std::string& host_path) {
    const std::string name = GetAddInFileName(host_path);
    return name.substr(0, name.find('.'));
}

std::string GetAddInDirectory(const std::string& host_path) {
    const std::size_t backslash = host_path.rfind('\\');
    return backslash == std::string::npos ? std::string() : host_path.substr(0, backslash);
}

} // namespace metrify
