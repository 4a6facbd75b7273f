#include "integration/wizard/wizard_content.h"

namespace metrify {

namespace {

bool IsConstant(std::string_view text) {
    const char first = text.front();
    return first == '"' || (first >= '0' && first <= '9') || text == "TRUE" || text == "FALSE";
}

} // namespace

bool AllowsContent(int mode, std::string_view text) {
    const std::string_view content = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    switch (mode) {
    case 1:
        return content.empty();
    case 2:
        return content.empty() || IsConstant(content);
    case 3:
        return true;
    default:
        return false;
    }
}

} // namespace metrify
