#include "xllrt/gate/host_paths.h"

#include "xllrt/gate/host_gate.h"

namespace metrify {

std::string GetHostPathText() {
    CXlOper name;
    return CallNoArgs(name, xlGetName) == xlretSuccess ? name.ToText() : std::string();
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
