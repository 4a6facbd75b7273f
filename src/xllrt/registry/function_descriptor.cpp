#include "xllrt/registry/function_descriptor.h"

#include "xllrt/text/code_page.h"

namespace metrify {

namespace {

template <class Char>
std::basic_string<Char> TextOrEmpty(const Char* text) {
    return text ? std::basic_string<Char>(text) : std::basic_string<Char>();
}

// The texts of a list, each with its terminator, up to the empty one.
template <class Char>
std::vector<std::basic_string<Char>> SplitList(const Char* list) {
    std::vector<std::basic_string<Char>> texts;
    while (list && *list != 0)
        list += texts.emplace_back(list).size() + 1;
    return texts;
}

void FillFromWide(std::string& narrow, const std::u16string& wide) {
    if (narrow.empty() && !wide.empty())
        narrow = ToNarrow(wide);
}

} // namespace

CXlFunctionDescriptor::CXlFunctionDescriptor(const XlFunctionRecord& record)
    : narrowEntry(TextOrEmpty(record.narrowEntry)), wideEntry(TextOrEmpty(record.wideEntry)),
      narrowType(TextOrEmpty(record.narrowType)), wideType(TextOrEmpty(record.wideType)),
      functionName(TextOrEmpty(record.functionName)),
      narrowArgumentNames(TextOrEmpty(record.narrowArgumentNames)),
      wideArgumentNames(TextOrEmpty(record.wideArgumentNames)),
      macroType(static_cast<std::uint16_t>(record.macroType >= 3 ? 1 : record.macroType)),
      narrowCategory(TextOrEmpty(record.narrowCategory)), wideCategory(TextOrEmpty(record.wideCategory)),
      helpId(record.helpId), helpTopic(TextOrEmpty(record.helpTopic)),
      narrowDescription(TextOrEmpty(record.narrowDescription)),
      wideDescription(TextOrEmpty(record.wideDescription)),
      narrowArgumentHelp(SplitList(record.narrowArgumentHelp)),
      wideArgumentHelp(SplitList(record.wideArgumentHelp)), signature(TextOrEmpty(record.signature)),
      minimumVersion(record.minimumVersion), maximumVersion(record.maximumVersion) {
    FillFromWide(narrowArgumentNames, wideArgumentNames);
    FillFromWide(narrowCategory, wideCategory);
    FillFromWide(narrowDescription, wideDescription);
    if (narrowArgumentHelp.empty())
        for (const std::u16string& text : wideArgumentHelp)
            narrowArgumentHelp.push_back(ToNarrow(text));
}

} // namespace metrify
