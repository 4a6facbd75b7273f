#include "xllrt/text/message_catalogue.h"

#include "xllrt/text/string_resource.h"

#include <algorithm>
#include <charconv>

namespace metrify {

namespace {

struct NumberedText {
    unsigned number;
    std::string_view text;
};

#define METRIFY_MESSAGE(number, text) {number, text},
constexpr NumberedText message_texts[] = {
    {0, ""},
#include "xllrt/text/message_texts.inc"
};
#undef METRIFY_MESSAGE

constexpr bool NumbersAreRows() {
    unsigned row = 0;
    return std::all_of(std::begin(message_texts), std::end(message_texts),
                       [&row](const NumberedText& message) { return message.number == row++; });
}

static_assert(std::size(message_texts) == kMessageCount && NumbersAreRows());

constexpr std::array<std::string_view, kMessageCount> TextsByNumber() {
    std::array<std::string_view, kMessageCount> texts;
    std::transform(std::begin(message_texts), std::end(message_texts), texts.begin(),
                   [](const NumberedText& message) { return message.text; });
    return texts;
}

template <class Char>
bool LoadMessageOf(std::basic_string<Char>& text, unsigned number) {
    if (number >= kMessageCount)
        return false;
    if (!LoadResourceText(text, kMessageResourceBase + number, TextLanguage())) {
        // The built-in texts are ASCII, so one character makes one unit of either width.
        const std::string_view built_in = kBuiltInMessages[number];
        text.assign(built_in.begin(), built_in.end());
    }
    return true;
}

template <class Char>
std::basic_string<Char> Decimal(unsigned number) {
    char digits[16];
    const std::to_chars_result end = std::to_chars(std::begin(digits), std::end(digits), number);
    return {digits, end.ptr};
}

} // namespace

constinit const std::array<std::string_view, kMessageCount> kBuiltInMessages = TextsByNumber();

bool LoadMessage(std::string& text, unsigned number) {
    return LoadMessageOf(text, number);
}

bool LoadMessage(std::u16string& text, unsigned number) {
    return LoadMessageOf(text, number);
}

std::string MessageText(unsigned number) {
    std::string text;
    return LoadMessage(text, number) ? text : "Unknown error";
}

std::u16string WideMessageText(unsigned number) {
    std::u16string text;
    LoadMessage(text, number);
    return text;
}

template <class Char>
void FormatMessageList(std::basic_string<Char>& text, unsigned number,
                       std::span<const psl::TextArgument<Char>> arguments) {
    std::basic_string<Char> format;
    if (LoadMessage(format, number)) {
        psl::FormatOrThrow<Char>(text, format.c_str(), arguments);
        return;
    }
    constexpr std::string_view not_found = "Message #{0} not found";
    format.assign(not_found.begin(), not_found.end());
    psl::Format(text, format.c_str(), Decimal<Char>(number));
}

template void FormatMessageList(std::string&, unsigned, std::span<const psl::TextArgument<char>>);
template void FormatMessageList(std::u16string&, unsigned, std::span<const psl::TextArgument<char16_t>>);

} // namespace metrify
