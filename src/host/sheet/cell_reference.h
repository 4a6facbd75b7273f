#pragma once

// References to one cell as text, in either style.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace metrify::host {

enum class ReferenceStyle { a1, r1c1 };

/// Row and column, counted from 0.
struct CellPosition {
    std::int32_t row = 0;
    std::int32_t column = 0;
    friend bool operator==(const CellPosition&, const CellPosition&) = default;
    /// Row by row.
    friend bool operator<(const CellPosition& left, const CellPosition& right) {
        return left.row != right.row ? left.row < right.row : left.column < right.column;
    }
};

/// Rows and columns of a sheet.
struct SheetSize {
    std::int32_t rows;
    std::int32_t columns;
};

/// A cell, and whether its row and column stay the same when the formula is moved.
struct CellReference {
    CellPosition at;
    bool row_is_absolute = false;
    bool column_is_absolute = false;
};

/// A reference at the start of a text, and its length.
struct ReadReferenceResult {
    CellReference reference;
    std::size_t length = 0;
};

/// Reads a reference at the start of the text. Relative parts of the R1C1 style count from `base`. Nothing if
/// there is none, if it is outside the sheet, or if it is only the beginning of a longer name.
std::optional<ReadReferenceResult> ReadCellReference(std::u16string_view text, ReferenceStyle style,
                                                     CellPosition base, SheetSize size);

/// Writes a reference.
std::u16string CellReferenceText(const CellReference& reference, ReferenceStyle style, CellPosition base);

} // namespace metrify::host
