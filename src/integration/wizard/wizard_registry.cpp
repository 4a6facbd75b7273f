#include "integration/wizard/wizard_registry.h"

#include <algorithm>

namespace metrify {

bool CXlWizExUIFunctionRegistry::MakeReady() {
    return std::any_of(
        functions_.begin(), functions_.end(),
        [](const auto& entry) { return entry.second->KindCount() > 0; });
}

IXlWizExFunction* CXlWizExUIFunctionRegistry::FindFunction(std::string_view name) const {
    const auto found = functions_.find(name);
    return found != functions_.end() ? found->second : nullptr;
}

const XlIconSize* CXlWizExUIFunctionRegistry::IconSize(int kind) const {
    switch (kind) {
    case 1:
        return &list_icon_;
    case 2:
        return &button_icon_;
    default:
        return nullptr;
    }
}

void CXlWizExUIFunctionRegistry::Add(std::string name, IXlWizExFunction& function) {
    functions_.insert_or_assign(std::move(name), &function);
}

} // namespace metrify
