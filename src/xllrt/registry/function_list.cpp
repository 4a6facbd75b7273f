#include "xllrt/registry/function_list.h"

#include "xllrt/text/ascii_case.h"
#include "xllrt/text/code_page.h"

#include <algorithm>
#include <utility>

namespace metrify {

CXlFunctionDescriptor& CXlFunctionList::Add(CXlFunctionDescriptor descriptor) {
    CXlFunctionDescriptor& added = owned_.emplace_back(std::move(descriptor));
    listed_.push_back(&added);
    return added;
}

int CXlFunctionList::BuildDescriptors() {
    int count = 0;
    for (const XlFunctionRecord* record = FirstFunctionRecord(); record; record = record->next) {
        Add(CXlFunctionDescriptor(*record));
        ++count;
    }
    return count;
}

CXlFunctionDescriptor* CXlFunctionList::FindFunction(std::u16string_view name) const {
    const auto found = std::find_if(listed_.begin(), listed_.end(), [name](const auto* descriptor) {
        return CompareIgnoringCase(descriptor->functionName, name) == 0;
    });
    return found != listed_.end() ? *found : nullptr;
}

CXlFunctionDescriptor* CXlFunctionList::FindFunction(std::string_view name) const {
    return FindFunction(ToWide(name));
}

void CXlFunctionList::RemoveFunction(std::u16string_view name) {
    const auto found = std::find(listed_.begin(), listed_.end(), FindFunction(name));
    if (found != listed_.end())
        listed_.erase(found);
}

void CXlFunctionList::Clear() {
    for (CXlFunctionDescriptor* descriptor : listed_) {
        descriptor->registered = 0;
        descriptor->registerId = 0.0;
    }
    listed_.clear();
}

} // namespace metrify
