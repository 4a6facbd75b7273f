#include "host/sheet/value_text.h"

#include "host/sheet/utf8.h"

#include <charconv>
#include <iterator>

namespace metrify::host {

namespace {

std::string ShortestText(double number) {
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), number).ptr};
}

// Octal escapes have a fixed length of three digits, so that a digit may follow.
void AppendOctal(std::string& quoted, unsigned char c) {
    quoted += '\\';
    for (const unsigned shift : {6U, 3U, 0U})
        quoted += static_cast<char>('0' + ((c >> shift) & 7U));
}

std::string Quoted(std::string_view text) {
    constexpr std::string_view with_letter = "\a\b\t\n\v\f\r\"\\";
    constexpr std::string_view letters = "abtnvfr\"\\";
    constexpr unsigned char kDelete = 0x7F;
    std::string quoted = "\"";
    for (const char c : text) {
        const std::size_t escape = with_letter.find(c);
        const auto byte = static_cast<unsigned char>(c);
        if (escape != with_letter.npos) {
            quoted += '\\';
            quoted += letters[escape];
        } else if (byte < ' ' || byte == kDelete) {
            AppendOctal(quoted, byte);
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string CellText(const CellValue& cell) {
    if (const auto* number = cell.As<double>())
        return ShortestText(*number);
    if (const auto* integer = cell.As<std::int32_t>())
        return std::to_string(*integer);
    if (const auto* text = cell.As<std::u16string>())
        return Quoted(ToUtf8(*text));
    if (const auto* boolean = cell.As<bool>())
        return *boolean ? "TRUE" : "FALSE";
    if (const auto* error = cell.As<CellError>())
        return ToUtf8(ErrorText(*error));
    return {};
}

} // namespace

std::string RowsText(const CellValue& value) {
    const auto* array = value.As<CellArray>();
    if (!array)
        return CellText(value) + '\n';
    std::string rows;
    for (std::int32_t row = 0; row < array->rows; ++row) {
        for (std::int32_t column = 0; column < array->columns; ++column) {
            if (column > 0)
                rows += '\t';
            rows += CellText(array->At(row, column));
        }
        rows += '\n';
    }
    return rows;
}

} // namespace metrify::host
