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

// Converts what only the wide texts have. Entry and type differ between the families.
void FillFromWide(FunctionTexts<char>& narrow, const FunctionTexts<XCHAR>& wide) {
    const auto fill = [](std::string& text, const std::u16string& wide_text) {
        if (text.empty() && !wide_text.empty())
            text = ToNarrow(wide_text);
    };
    fill(narrow.argumentNames, wide.argumentNames);
    fill(narrow.category, wide.category);
    fill(narrow.description, wide.description);
    if (narrow.argumentHelp.empty())
        for (const std::u16string& text : wide.argumentHelp)
            narrow.argumentHelp.push_back(ToNarrow(text));
}

} // namespace

template <class Char>
FunctionTexts<Char>::FunctionTexts(const XlFunctionTexts<Char>& record)
    : entry(TextOrEmpty(record.entry)), type(TextOrEmpty(record.type)),
      argumentNames(TextOrEmpty(record.argumentNames)), category(TextOrEmpty(record.category)),
      description(TextOrEmpty(record.description)), argumentHelp(SplitList(record.argumentHelp)) {}

template struct FunctionTexts<char>;
template struct FunctionTexts<XCHAR>;

CXlFunctionDescriptor::CXlFunctionDescriptor(const XlFunctionRecord& record)
    : narrow(record.narrow), wide(record.wide), functionName(TextOrEmpty(record.functionName)),
      macroType(static_cast<std::uint16_t>(record.macroType >= 3 ? 1 : record.macroType)),
      helpId(record.helpId), helpTopic(TextOrEmpty(record.helpTopic)),
      signature(TextOrEmpty(record.signature)), minimumVersion(record.minimumVersion),
      maximumVersion(record.maximumVersion) {
    FillFromWide(narrow, wide);
}

} // namespace metrify
