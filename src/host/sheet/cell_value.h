#pragma once

// A value of a cell or an argument, independent of the two record families.

#include "xllrt/text/ascii_case.h"
#include "xllrt/value/record_family.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace metrify::host {

/// The longest text of a cell.
inline constexpr std::size_t kMaxCellText = RecordFamily<XLOPER12>::kMaxText;

struct EmptyCell {
    friend bool operator==(const EmptyCell&, const EmptyCell&) = default;
};

struct MissingArgument {
    friend bool operator==(const MissingArgument&, const MissingArgument&) = default;
};

struct CellError {
    int code;
    friend bool operator==(const CellError&, const CellError&) = default;
};

/// A rectangle of cells, counted from 0, the last ones included.
struct Area {
    std::int32_t first_row;
    std::int32_t last_row;
    std::int32_t first_column;
    std::int32_t last_column;

    std::int32_t Rows() const { return last_row - first_row + 1; }
    std::int32_t Columns() const { return last_column - first_column + 1; }
    bool Contains(std::int32_t row, std::int32_t column) const {
        return row >= first_row && row <= last_row && column >= first_column && column <= last_column;
    }
    bool IsOneCell() const { return first_row == last_row && first_column == last_column; }
    friend bool operator==(const Area&, const Area&) = default;
};

/// Cells of one sheet. A simple reference is a single rectangle on the current sheet; its record names no
/// sheet.
struct Reference {
    IDSHEET sheet = 0;
    std::vector<Area> areas;
    bool is_simple = false;
    friend bool operator==(const Reference&, const Reference&) = default;
};

struct CellValue;

/// Cells in rows.
struct CellArray {
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    std::vector<CellValue> cells;

    const CellValue& At(std::int32_t row, std::int32_t column) const;
    friend bool operator==(const CellArray&, const CellArray&);
};

struct CellValue {
    using Content = std::variant<EmptyCell, MissingArgument, double, std::u16string, bool, CellError,
                                 std::int32_t, Reference, CellArray>;

    CellValue() = default;
    CellValue(double number) : content(number) {}
    CellValue(std::int32_t integer) : content(integer) {}
    CellValue(bool logical) : content(logical) {}
    CellValue(const char16_t* text) : content(std::u16string(text)) {}
    CellValue(std::u16string text) : content(std::move(text)) {}
    CellValue(CellError error) : content(error) {}
    CellValue(MissingArgument missing) : content(missing) {}
    CellValue(Reference reference) : content(std::move(reference)) {}
    CellValue(CellArray array) : content(std::move(array)) {}

    template <class Kind>
    bool Is() const {
        return std::holds_alternative<Kind>(content);
    }
    /// The content if it is of this kind, otherwise null.
    template <class Kind>
    const Kind* As() const {
        return std::get_if<Kind>(&content);
    }
    friend bool operator==(const CellValue&, const CellValue&) = default;

    Content content;
};

/// An array of one row.
CellArray RowOf(std::vector<CellValue> cells);

/// An array of rows, all as long as the first.
CellArray ArrayOf(const std::vector<std::vector<CellValue>>& rows);

/// The type code of a value's record.
int TypeCodeOf(const CellValue& value);

/// The text of an error, such as "#VALUE!"; "#N/A" for an unknown code.
std::u16string_view ErrorText(CellError error);

/// A number as a cell shows it: the shortest text that reads back equal.
std::u16string NumberText(double number);

/// Reads a whole text as a number, blanks around it allowed.
bool ReadNumber(std::u16string_view text, double& number);

/// TRUE or FALSE in any case; nothing for any other text.
std::optional<bool> ReadBoolean(std::u16string_view text);

/// The error whose text is at the start of a text, in any case.
std::optional<CellError> ReadError(std::u16string_view text);

} // namespace metrify::host
