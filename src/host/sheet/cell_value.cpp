#include "host/sheet/cell_value.h"

#include "xllrt/value/error_text.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <utility>

namespace metrify::host {

const CellValue& CellArray::At(std::int32_t row, std::int32_t column) const {
    return cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                 static_cast<std::size_t>(column)];
}

bool operator==(const CellArray& left, const CellArray& right) {
    return left.rows == right.rows && left.columns == right.columns && left.cells == right.cells;
}

CellArray RowOf(std::vector<CellValue> cells) {
    const auto columns = static_cast<std::int32_t>(cells.size());
    return {1, columns, std::move(cells)};
}

CellArray ArrayOf(const std::vector<std::vector<CellValue>>& rows) {
    CellArray array;
    array.rows = static_cast<std::int32_t>(rows.size());
    array.columns = rows.empty() ? 0 : static_cast<std::int32_t>(rows.front().size());
    for (const std::vector<CellValue>& row : rows)
        array.cells.insert(array.cells.end(), row.begin(), row.end());
    return array;
}

int TypeCodeOf(const CellValue& value) {
    if (const auto* reference = value.As<Reference>())
        return reference->is_simple ? xltypeSRef : xltypeRef;
    // In the order of the alternatives of Content.
    constexpr int codes[] = {xltypeNil, xltypeMissing, xltypeNum, xltypeStr,  xltypeBool,
                             xltypeErr, xltypeInt,     xltypeRef, xltypeMulti};
    return codes[value.content.index()];
}

std::u16string_view ErrorText(CellError error) {
    const std::u16string_view text = WideErrorText(error.code);
    return text.empty() ? WideErrorText(xlerrNA) : text;
}

std::u16string NumberText(double number) {
    // Below this limit, whole numbers are written without a power of ten.
    constexpr double plain_limit = 1e15;
    char text[32];
    const bool is_plain = std::fabs(number) < plain_limit && std::trunc(number) == number;
    const std::to_chars_result end =
        is_plain ? std::to_chars(std::begin(text), std::end(text), static_cast<long long>(number))
                 : std::to_chars(std::begin(text), std::end(text), number);
    return {text, end.ptr};
}

bool ReadNumber(std::u16string_view text, double& number) {
    std::string ascii;
    for (const char16_t c : text)
        ascii += c < 0x80 ? static_cast<char>(c) : '?';
    const std::size_t first = ascii.find_first_not_of(' ');
    if (first == ascii.npos)
        return false;
    std::string_view digits = std::string_view(ascii).substr(first, ascii.find_last_not_of(' ') + 1 - first);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    const char* const end = digits.data() + digits.size();
    const std::from_chars_result read = std::from_chars(digits.data(), end, number);
    return read.ec == std::errc() && read.ptr == end && std::isfinite(number);
}

std::optional<bool> ReadBoolean(std::u16string_view text) {
    if (EqualIgnoringCase(text, u"TRUE"))
        return true;
    return EqualIgnoringCase(text, u"FALSE") ? std::optional(false) : std::nullopt;
}

std::optional<CellError> ReadError(std::u16string_view text) {
    for (const int code : {xlerrNull, xlerrDiv0, xlerrValue, xlerrRef, xlerrName, xlerrNum, xlerrNA}) {
        const std::u16string_view name = WideErrorText(code);
        if (EqualIgnoringCase(text.substr(0, name.size()), name))
            return CellError{code};
    }
    return std::nullopt;
}

} // namespace metrify::host
