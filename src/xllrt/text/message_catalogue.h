#pragma once

// The runtime's messages. Each has a number; its text is taken from the string table of the module, or if
// that has none from the built-in table.

#include "xllrt/text/string_formatter.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace metrify {

/// Numbers of the messages that the runtime raises.
enum MessageNumber : unsigned {
    kMessageErrorCell = 1,
    kMessageBoolean = 4,
    kMessageNumber = 5,
    kMessageString = 7,
    kMessageConversionError = 10,
    kMessageExpected = 11,
    kMessageIndexOutOfRange = 30,
    kMessageIllegalArgument = 31,
    kMessageBadOperType = 32,
    kMessageStringTooLong = 37,
    kMessageSourceNotScalar = 41,
    kMessageIllegalResult = 48,
    kMessageRegistrationFailed = 49,
    kMessageLoadFailureTitle = 50,
    kMessageStructuredException = 55,
    kMessageCallFailed = 58,
};

/// The catalogue has the numbers below this.
inline constexpr unsigned kMessageCount = 66;

/// The id of a message in the string table is its number plus this.
inline constexpr std::uint32_t kMessageResourceBase = 53248;

/// The built-in texts by number; number 0 is the empty text.
extern const std::array<std::string_view, kMessageCount> kBuiltInMessages;

/// Reads the text of a message. False if the number is not in the catalogue.
bool LoadMessage(std::string& text, unsigned number);
bool LoadMessage(std::u16string& text, unsigned number);

/// A message's text with its placeholders. For a number that is not in the catalogue the narrow text is
/// "Unknown error" and the wide one, which is used for titles and names of types, is empty.
std::string MessageText(unsigned number);
std::u16string WideMessageText(unsigned number);

/// Replaces the placeholders of a message's text by the arguments. A number that is not in the catalogue
/// makes the text "Message #{0} not found", with the number.
template <class Char>
void FormatMessageList(std::basic_string<Char>& text, unsigned number,
                       std::span<const psl::TextArgument<Char>> arguments);

/// As `FormatMessageList`, with the arguments as separate parameters, as `psl::Format` takes them.
template <class Char, class... Arguments>
void FormatMessageText(std::basic_string<Char>& text, unsigned number, const Arguments&... arguments) {
    const std::array<psl::TextArgument<Char>, sizeof...(Arguments)> list{
        psl::TextArgument<Char>(arguments)...};
    FormatMessageList<Char>(text, number, list);
}

} // namespace metrify
