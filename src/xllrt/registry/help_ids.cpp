#include "xllrt/registry/help_ids.h"

#include "xllrt/registry/function_list.h"
#include "xllrt/text/ascii_case.h"
#include "xllrt/text/code_page.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace metrify {

namespace {

constexpr std::u16string_view kAsyncEnding = u"Async";

// Those with an id, by id; then the others. Equal ones are ordered by name.
bool ComesBefore(const CXlFunctionDescriptor* left, const CXlFunctionDescriptor* right) {
    if (left->helpId != right->helpId)
        return right->helpId == 0 || (left->helpId != 0 && left->helpId < right->helpId);
    return CompareIgnoringCase(left->functionName, right->functionName) < 0;
}

std::uint16_t IdOf(const CXlHelpIds& ids, std::u16string_view name) {
    const auto found = ids.find(std::u16string(name));
    return found != ids.end() ? found->second : std::uint16_t{0};
}

// The id of the function whose asynchronous form this is, or 0.
std::uint16_t SharedId(const CXlHelpIds& ids, std::u16string_view name) {
    if (name.size() <= kAsyncEnding.size() || !name.ends_with(kAsyncEnding))
        return 0;
    return IdOf(ids, name.substr(0, name.size() - kAsyncEnding.size()));
}

} // namespace

CXlHelpIds AssignHelpIds(std::span<CXlFunctionDescriptor* const> functions) {
    std::vector<const CXlFunctionDescriptor*> ordered(functions.begin(), functions.end());
    std::stable_sort(ordered.begin(), ordered.end(), ComesBefore);
    CXlHelpIds ids;
    std::uint16_t next_id = kFirstHelpId;
    for (const CXlFunctionDescriptor* descriptor : ordered) {
        std::uint16_t id = descriptor->helpId;
        if (id == 0) {
            id = SharedId(ids, descriptor->functionName);
            ids[descriptor->functionName] = id != 0 ? id : next_id++;
            continue;
        }
        if (id >= next_id)
            next_id = static_cast<std::uint16_t>(id + 1);
        ids[descriptor->functionName] = id;
    }
    return ids;
}

std::u16string HelpText(const CXlFunctionDescriptor& descriptor, const std::string& help_file,
                        const CXlHelpIds& help_ids) {
    const std::uint16_t id =
        descriptor.helpId != 0 ? descriptor.helpId : IdOf(help_ids, descriptor.functionName);
    if (descriptor.helpTopic.empty() && id == 0)
        return {};
    std::u16string text = ToWide(help_file) + u"!";
    text += descriptor.helpTopic.empty() ? ToWide(std::to_string(id)) : descriptor.helpTopic;
    return text;
}

} // namespace metrify
