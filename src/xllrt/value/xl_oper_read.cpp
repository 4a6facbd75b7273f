// Reading a value as a number, a boolean or a text.

#include "xllrt/fault/exceptions.h"
#include "xllrt/text/code_page.h"
#include "xllrt/text/message_catalogue.h"
#include "xllrt/value/record_reading.h"
#include "xllrt/value/xl_oper.h"

namespace metrify {

namespace {

// "Expected {0}", with the name of a type.
[[noreturn]] void ThrowExpected(unsigned type_name) {
    std::u16string message;
    FormatMessageText(message, kMessageExpected, WideMessageText(type_name));
    throw CXlConversionException(message);
}

void PutText(std::string& text, std::string&& read) {
    text = std::move(read);
}

void PutText(std::string& text, const std::u16string& read) {
    text = ToNarrow(read);
}

void PutText(std::u16string& text, const std::string& read) {
    text = ToWide(read);
}

void PutText(std::u16string& text, std::u16string&& read) {
    text = std::move(read);
}

} // namespace

double CXlOper::ToNumber(bool strict) const {
    double value = 0.0;
    if (!Visit([&](const auto& record) { return RecordToNumber(record, value); }) && strict)
        ThrowExpected(kMessageNumber);
    return value;
}

bool CXlOper::ToBool(bool strict) const {
    bool value = false;
    if (!Visit([&](const auto& record) { return RecordToBool(record, value); }) && strict)
        ThrowExpected(kMessageBoolean);
    return value;
}

template <class Text>
Text CXlOper::ToAnyText(bool strict) const {
    Text text;
    if (!HasValue12() && !HasValue4()) {
        if (strict)
            ThrowExpected(kMessageString);
        return text;
    }
    if (strict && !IsString())
        throw CXlConversionException(kMessageConversionError);
    // The text of an error is for records only, a value that is an error reads as no text.
    if (IsError())
        return text;
    Visit([&](const auto& record) {
        std::basic_string<typename RecordFamily<std::remove_cvref_t<decltype(record)>>::Unit> read;
        if (RecordToText(record, read))
            PutText(text, std::move(read));
    });
    return text;
}

std::string CXlOper::ToText(bool strict) const {
    return ToAnyText<std::string>(strict);
}

std::u16string CXlOper::ToWideText(bool strict) const {
    return ToAnyText<std::u16string>(strict);
}

} // namespace metrify
