#include "xllrt/registry/registration_arguments.h"

#include "xllrt/registry/resource_text.h"
#include "xllrt/text/text_number.h"
#include "xllrt/value/text_value.h"

#include <algorithm>
#include <span>

namespace metrify {

namespace {

// The host rejects longer texts.
constexpr std::size_t kMaxDescription = 255;

// The host drops the last two characters of the last text, so append two dots.
template <class Char>
void AppendClosingDots(std::basic_string<Char>& text) {
    constexpr Char kDot = '.';
    for (int missing = 2; missing > 0; --missing) {
        if (text.size() >= 2 && text[text.size() - 1] == kDot && text[text.size() - 2] == kDot)
            return;
        text += kDot;
    }
}

template <class Char>
CXlOper LocalizedValue(const std::basic_string<Char>& text) {
    return TextValue(LocalizedText(text.c_str()));
}

template <class Char>
CXlOper CategoryValue(const std::basic_string<Char>& category) {
    std::int32_t number = 0;
    if (!ParseInteger(category, number))
        return LocalizedValue(category);
    CXlOper value;
    value.SetInt(number);
    return value;
}

// The dots are appended before the cut: a very long text loses them again.
template <class Char>
CXlOper DescriptionValue(const std::basic_string<Char>& text, bool is_last) {
    std::basic_string<Char> shown = LocalizedText(text.c_str());
    if (is_last)
        AppendClosingDots(shown);
    shown.resize(std::min(shown.size(), kMaxDescription));
    return TextValue(shown);
}

// In the host's published order.
template <class Char>
std::vector<CXlOper> Registration(const FunctionTexts<Char>& texts, std::size_t max_argument_helps,
                                  const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                  const std::u16string& help) {
    std::span<const std::basic_string<Char>> argument_help = texts.argumentHelp;
    argument_help = argument_help.first(std::min(argument_help.size(), max_argument_helps));
    const bool has_arguments = CountArguments(texts.type) > 0;
    std::vector<CXlOper> values;
    values.reserve(kShortRegistration + 2 + argument_help.size());
    values.push_back(module_name);
    values.push_back(TextValue(texts.entry));
    values.push_back(TextValue(texts.type));
    values.push_back(TextValue(descriptor.functionName));
    values.push_back(LocalizedValue(texts.argumentNames));
    values.push_back(TextValue(std::to_string(descriptor.macroType)));
    values.push_back(CategoryValue(texts.category));
    values.push_back(TextValue("")); // the key that starts a command
    values.push_back(TextValue(help));
    values.push_back(DescriptionValue(texts.description, !has_arguments));
    for (const std::basic_string<Char>& text : argument_help) {
        const bool is_last = has_arguments && &text == &argument_help.back();
        values.push_back(DescriptionValue(text, is_last));
    }
    return values;
}

} // namespace

std::size_t CountArguments(const std::string& type_text) {
    const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    const std::size_t after_result = std::min<std::size_t>(1, type_text.size());
    const auto first = type_text.begin() + static_cast<std::ptrdiff_t>(after_result);
    return static_cast<std::size_t>(std::count_if(first, type_text.end(), is_letter));
}

std::vector<CXlOper> WideRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                      const std::u16string& help) {
    return Registration(descriptor.wide, descriptor.wide.argumentHelp.size(), descriptor, module_name, help);
}

std::vector<CXlOper> NarrowRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                        const std::u16string& help) {
    return Registration(descriptor.narrow, kMaxNarrowArgumentHelps, descriptor, module_name, help);
}

} // namespace metrify
