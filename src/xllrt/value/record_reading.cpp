#include "xllrt/value/record_reading.h"

#include "xllrt/text/code_page.h"
#include "xllrt/text/text_number.h"
#include "xllrt/value/error_text.h"
#include "xllrt/value/record_family.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace metrify {

namespace {

// ---- Numbers

bool NumberToInt(double number, std::int32_t& value) {
    if (!(number >= std::numeric_limits<std::int32_t>::min() &&
          number <= std::numeric_limits<std::int32_t>::max()))
        return false;
    value = static_cast<std::int32_t>(number);
    return true;
}

template <class Record>
bool ReadNumber(const Record& record, double& value) {
    switch (TypeOf(record)) {
    case xltypeNum:
        value = record.val.num;
        return true;
    case xltypeBool:
        value = record.val.xbool != 0 ? 1.0 : 0.0;
        return true;
    case xltypeInt:
        value = record.val.w;
        return true;
    case xltypeStr:
        return ParseNumber(TextOf(record), value);
    default:
        return false;
    }
}

template <class View>
bool TextToInt(View text, std::int32_t& value) {
    double number = 0.0;
    return ParseInteger(text, value) || (ParseNumber(text, number) && NumberToInt(number, value));
}

template <class Record>
bool ReadInt(const Record& record, std::int32_t& value) {
    switch (TypeOf(record)) {
    case xltypeNum:
        return NumberToInt(record.val.num, value);
    case xltypeBool:
        value = record.val.xbool != 0 ? 1 : 0;
        return true;
    case xltypeInt:
        value = record.val.w;
        return true;
    case xltypeStr:
        return TextToInt(TextOf(record), value);
    default:
        return false;
    }
}

// ---- Booleans

template <class View>
bool IsWord(View text, std::string_view lower_word) {
    return std::equal(
        text.begin(), text.end(), lower_word.begin(), lower_word.end(),
        [](auto unit, char letter) {
            const bool is_capital = unit >= 'A' && unit <= 'Z';
            return (is_capital ? unit - 'A' + 'a' : unit) == letter;
        });
}

template <class View>
bool TextToBool(View text, bool& value) {
    if (IsWord(text, "true") || IsWord(text, "false")) {
        value = IsWord(text, "true");
        return true;
    }
    std::int32_t integer = 0;
    double number = 0.0;
    if (ParseInteger(text, integer)) {
        value = integer != 0;
        return true;
    }
    if (ParseNumber(text, number)) {
        value = number != 0.0;
        return true;
    }
    return false;
}

template <class Record>
bool ReadBool(const Record& record, bool& value) {
    switch (TypeOf(record)) {
    case xltypeNum:
        value = record.val.num != 0.0;
        return true;
    case xltypeBool:
        value = record.val.xbool != 0;
        return true;
    case xltypeInt:
        value = record.val.w != 0;
        return true;
    case xltypeStr:
        return TextToBool(TextOf(record), value);
    default:
        return false;
    }
}

// ---- Texts

constexpr int kDecimals = 6;

// The longest text of a number.
constexpr std::size_t kNumberText = 31;

// All digits of the largest double, its sign, point and decimals.
constexpr std::size_t kFixedText = std::numeric_limits<double>::max_exponent10 + kDecimals + 4;

template <class Text>
void PutAscii(Text& text, std::string_view ascii) {
    text.assign(ascii.begin(), ascii.end());
}

template <class Text>
void PutNumber(Text& text, double number) {
    if (std::isnan(number)) {
        PutAscii(text, "nan");
        return;
    }
    char buffer[kFixedText];
    const char* end =
        std::to_chars(std::begin(buffer), std::end(buffer), number, std::chars_format::fixed, kDecimals).ptr;
    PutAscii(text, std::string_view(buffer, static_cast<std::size_t>(end - buffer)).substr(0, kNumberText));
}

template <class Text>
void PutInteger(Text& text, std::int32_t integer) {
    char buffer[16];
    const char* end = std::to_chars(std::begin(buffer), std::end(buffer), integer).ptr;
    PutAscii(text, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
}

template <class Record, class Text>
bool ReadText(const Record& record, Text& text) {
    switch (TypeOf(record)) {
    case xltypeNum:
        PutNumber(text, record.val.num);
        return true;
    case xltypeBool:
        PutAscii(text, record.val.xbool != 0 ? "TRUE" : "FALSE");
        return true;
    case xltypeInt:
        PutInteger(text, record.val.w);
        return true;
    case xltypeErr:
        return ErrorCodeToText(record.val.err, text);
    case xltypeStr:
        text = TextOf(record);
        return true;
    default:
        return false;
    }
}

} // namespace

bool RecordToNumber(const XLOPER& record, double& value) {
    return ReadNumber(record, value);
}

bool RecordToNumber(const XLOPER12& record, double& value) {
    return ReadNumber(record, value);
}

bool RecordToBool(const XLOPER& record, bool& value) {
    return ReadBool(record, value);
}

bool RecordToBool(const XLOPER12& record, bool& value) {
    return ReadBool(record, value);
}

bool RecordToInt(const XLOPER& record, std::int32_t& value) {
    return ReadInt(record, value);
}

bool RecordToInt(const XLOPER12& record, std::int32_t& value) {
    return ReadInt(record, value);
}

bool RecordToText(const XLOPER& record, std::string& text) {
    return ReadText(record, text);
}

bool RecordToText(const XLOPER& record, std::u16string& text) {
    std::string narrow;
    if (!ReadText(record, narrow))
        return false;
    text = ToWide(narrow);
    return true;
}

bool RecordToText(const XLOPER12& record, std::string& text) {
    std::u16string wide;
    if (!ReadText(record, wide))
        return false;
    text = ToNarrow(wide);
    return true;
}

bool RecordToText(const XLOPER12& record, std::u16string& text) {
    return ReadText(record, text);
}

} // namespace metrify
