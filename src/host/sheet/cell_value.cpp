#include "host/sheet/cell_value.h"

#include <algorithm>
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
    // In the order of the content's kinds.
    constexpr int codes[] = {xltypeNil, xltypeMissing, xltypeNum, xltypeStr,  xltypeBool,
                             xltypeErr, xltypeInt,     xltypeRef, xltypeMulti};
    return codes[value.content.index()];
}

std::u16string_view ErrorText(CellError error) {
    constexpr std::pair<int, std::u16string_view> texts[] = {
        {xlerrNull, u"#NULL!"}, {xlerrDiv0, u"#DIV/0!"}, {xlerrValue, u"#VALUE!"}, {xlerrRef, u"#REF!"},
        {xlerrName, u"#NAME?"}, {xlerrNum, u"#NUM!"},    {xlerrNA, u"#N/A"},
    };
    const auto* found = std::find_if(std::begin(texts), std::end(texts),
                                     [error](const auto& text) { return text.first == error.code; });
    return found != std::end(texts) ? found->second : u"#N/A";
}

std::u16string NumberText(double number) {
    // Whole numbers are not abbreviated to a power of ten before they need be.
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

bool EqualIgnoringCase(std::u16string_view left, std::u16string_view right) {
    const auto fold = [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [fold](char16_t l, char16_t r) { return fold(l) == fold(r); });
}

} // namespace metrify::host
