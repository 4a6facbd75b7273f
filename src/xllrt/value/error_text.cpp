#include "xllrt/value/error_text.h"

#include "xllrt/value/host_records.h"

#include <algorithm>
#include <iterator>

namespace metrify {

namespace {

struct ErrorRow {
    int code;
    std::string_view text;
    std::u16string_view wide;
};

constexpr ErrorRow kErrors[] = {
    {xlerrNull, "#NULL!", u"#NULL!"}, {xlerrDiv0, "#DIV/0!", u"#DIV/0!"}, {xlerrValue, "#VALUE!", u"#VALUE!"},
    {xlerrRef, "#REF!", u"#REF!"},    {xlerrName, "#NAME?", u"#NAME?"},   {xlerrNum, "#NUM!", u"#NUM!"},
    {xlerrNA, "#N/A", u"#N/A"},
};

const ErrorRow* FindError(int code) {
    const auto* row = std::find_if(std::begin(kErrors), std::end(kErrors),
                                   [code](const ErrorRow& error) { return error.code == code; });
    return row == std::end(kErrors) ? nullptr : row;
}

template <class Text, class View>
bool PutErrorText(int code, View error_text, Text& text) {
    // Intentional: code 0 counts as no error, although it has a text.
    if (code == 0 || error_text.empty())
        return false;
    text = error_text;
    return true;
}

} // namespace

std::string_view ErrorText(int code) {
    const ErrorRow* row = FindError(code);
    return row ? row->text : std::string_view{};
}

std::u16string_view WideErrorText(int code) {
    const ErrorRow* row = FindError(code);
    return row ? row->wide : std::u16string_view{};
}

bool ErrorCodeToText(int code, std::string& text) {
    return PutErrorText(code, ErrorText(code), text);
}

bool ErrorCodeToText(int code, std::u16string& text) {
    return PutErrorText(code, WideErrorText(code), text);
}

} // namespace metrify
