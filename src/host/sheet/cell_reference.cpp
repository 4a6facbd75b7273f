#include "host/sheet/cell_reference.h"

#include "host/sheet/character_class.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace metrify::host {

namespace {

constexpr std::int32_t kLetters = 26;
constexpr std::size_t kMaxColumnLetters = 3;
constexpr std::size_t kMaxDigits = 7;

// True for a character that a name may have after its first one.
bool IsNameCharacter(char16_t c) {
    return IsLetter(c) || IsDigit(c) || c == u'_' || c == u'.' || c >= 0x80;
}

bool TakeCharacter(std::u16string_view& text, char16_t c) {
    const bool is_there = text.starts_with(c);
    if (is_there)
        text.remove_prefix(1);
    return is_there;
}

// Reads the digits of a number at the start of the text. Nothing, and the text unchanged, if there are none
// or more than `most`.
template <class IsDigitOfNumber, class ValueOfDigit>
std::optional<std::int32_t> TakeNumber(std::u16string_view& text, std::size_t most, std::int32_t base,
                                       IsDigitOfNumber is_digit, ValueOfDigit value) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), is_digit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    if (count == 0 || count > most)
        return std::nullopt;
    std::int32_t number = 0;
    for (const char16_t c : text.substr(0, count))
        number = number * base + value(c);
    text.remove_prefix(count);
    return number;
}

std::optional<std::int32_t> TakeInteger(std::u16string_view& text) {
    return TakeNumber(
        text, kMaxDigits, 10, IsDigit, [](char16_t c) { return c - u'0'; });
}

// Reads the letters of a column as its number, counted from 1.
std::optional<std::int32_t> TakeColumn(std::u16string_view& text) {
    return TakeNumber(
        text, kMaxColumnLetters, kLetters, IsLetter, [](char16_t c) { return (c & ~0x20) - u'A' + 1; });
}

// a1 := [ "$" ] letters [ "$" ] digits
std::optional<CellReference> TakeA1(std::u16string_view& text) {
    CellReference reference;
    reference.column_is_absolute = TakeCharacter(text, u'$');
    const std::optional<std::int32_t> column = TakeColumn(text);
    reference.row_is_absolute = TakeCharacter(text, u'$');
    const std::optional<std::int32_t> row = TakeInteger(text);
    if (!column || !row)
        return std::nullopt;
    reference.at = {*row - 1, *column - 1};
    return reference;
}

// axis := letter [ digits | "[" [ "-" ] digits "]" ]
bool TakeAxis(std::u16string_view& text, char16_t letter, std::int32_t base, std::int32_t& at,
              bool& is_absolute) {
    if (text.empty() || (text.front() & ~0x20) != letter)
        return false;
    text.remove_prefix(1);
    is_absolute = false;
    if (TakeCharacter(text, u'[')) {
        const bool is_negative = TakeCharacter(text, u'-');
        const std::optional<std::int32_t> offset = TakeInteger(text);
        at = base + (is_negative ? -offset.value_or(0) : offset.value_or(0));
        return offset && TakeCharacter(text, u']');
    }
    at = base;
    if (!text.empty() && IsDigit(text.front())) {
        const std::optional<std::int32_t> number = TakeInteger(text);
        at = number.value_or(0) - 1;
        is_absolute = true;
    }
    return true;
}

// r1c1 := row axis, column axis
std::optional<CellReference> TakeR1C1(std::u16string_view& text, CellPosition base) {
    CellReference reference;
    if (!TakeAxis(text, u'R', base.row, reference.at.row, reference.row_is_absolute) ||
        !TakeAxis(text, u'C', base.column, reference.at.column, reference.column_is_absolute))
        return std::nullopt;
    return reference;
}

std::u16string IntegerText(std::int32_t number) {
    char digits[16];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr};
}

std::u16string ColumnLetters(std::int32_t column) {
    std::u16string letters;
    for (std::int32_t left = column + 1; left > 0; left = (left - 1) / kLetters)
        letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (left - 1) % kLetters));
    return letters;
}

std::u16string AxisText(char16_t letter, std::int32_t at, std::int32_t base, bool is_absolute) {
    std::u16string text(1, letter);
    if (is_absolute) {
        text += IntegerText(at + 1);
    } else if (at != base) {
        text += u'[';
        text += IntegerText(at - base);
        text += u']';
    }
    return text;
}

} // namespace

std::optional<ReadReferenceResult> ReadCellReference(std::u16string_view text, ReferenceStyle style,
                                                     CellPosition base, SheetSize size) {
    std::u16string_view rest = text;
    const std::optional<CellReference> reference =
        style == ReferenceStyle::a1 ? TakeA1(rest) : TakeR1C1(rest, base);
    if (!reference || (!rest.empty() && (IsNameCharacter(rest.front()) || rest.front() == u'(')))
        return std::nullopt;
    const CellPosition at = reference->at;
    if (at.row < 0 || at.row >= size.rows || at.column < 0 || at.column >= size.columns)
        return std::nullopt;
    return ReadReferenceResult{*reference, text.size() - rest.size()};
}

std::u16string CellReferenceText(const CellReference& reference, ReferenceStyle style, CellPosition base) {
    const CellPosition at = reference.at;
    if (style == ReferenceStyle::r1c1)
        return AxisText(u'R', at.row, base.row, reference.row_is_absolute) +
               AxisText(u'C', at.column, base.column, reference.column_is_absolute);
    std::u16string text;
    if (reference.column_is_absolute)
        text += u'$';
    text += ColumnLetters(at.column);
    if (reference.row_is_absolute)
        text += u'$';
    return text + IntegerText(at.row + 1);
}

} // namespace metrify::host
