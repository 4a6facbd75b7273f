#pragma once

// What differs between the two record families, in one table, so that the rest is written once for both.

#include "xllrt/value/host_records.h"
#include "xllrt/value/record_full_height.h"

#include <limits>
#include <string_view>

namespace metrify {

template <class Record>
struct RecordFamily;

template <>
struct RecordFamily<XLOPER> {
    using Other = XLOPER12; ///< the record of the other family
    using Unit = char;
    using Length = std::uint8_t; ///< of a text, in its first unit
    using Rectangle = XLREF;
    using RectangleList = XLMREF;
    static constexpr bool kIsWide = false;
    static constexpr std::int32_t kMaxRows = 65536;
    static constexpr std::int32_t kMaxColumns = 256;
    static constexpr std::size_t kMaxText = 255; ///< of a cell or an argument
    static constexpr int kMaxArguments = 30;     ///< of a call of the host
    // The bits of a value's state for its record of this family.
    static constexpr std::uint16_t kOwned = 0x0001;     ///< the value owns what the record points at
    static constexpr std::uint16_t kHostOwned = 0x0002; ///< the host filled the record
    static constexpr std::uint16_t kValid = 0x0004;     ///< the record holds the value
};

template <>
struct RecordFamily<XLOPER12> {
    using Other = XLOPER;
    using Unit = XCHAR;
    using Length = std::uint16_t;
    using Rectangle = XLREF12;
    using RectangleList = XLMREF12;
    static constexpr bool kIsWide = true;
    static constexpr std::int32_t kMaxRows = 1048576;
    static constexpr std::int32_t kMaxColumns = 16384;
    static constexpr std::size_t kMaxText = 32767;
    static constexpr int kMaxArguments = 255;
    static constexpr int kFirstVersion = 12; ///< the first major version of the host that has this family
    static constexpr std::uint16_t kOwned = 0x0010;
    static constexpr std::uint16_t kHostOwned = 0x0020;
    static constexpr std::uint16_t kValid = 0x0040;
};

/// Rows and columns of a value.
struct XlSize {
    std::int32_t rows;
    std::int32_t columns;
    friend bool operator==(const XlSize&, const XlSize&) = default;
};

/// The type of a record, without its memory marks.
template <class Record>
std::uint16_t TypeOf(const Record& record) {
    return static_cast<std::uint16_t>(record.xltype & kTypeMask);
}

/// Stores a value in a field of the record as the field's width has it.
template <class Field, class Value>
void StoreField(Field& field, Value value) {
    field = static_cast<Field>(value);
}

/// The text of a text record; empty without one.
template <class Record>
std::basic_string_view<typename RecordFamily<Record>::Unit> TextOf(const Record& record) {
    const auto* text = record.val.str;
    if (!text)
        return {};
    return {text + 1, static_cast<typename RecordFamily<Record>::Length>(text[0])};
}

/// Rows and columns of an array record.
inline XlSize ArraySizeOf(const XLOPER12& record) {
    return {record.val.array.rows, record.val.array.columns};
}

/// As above. A count of 0 is 65536 rows in an array that was made here with as many, and none otherwise.
inline XlSize ArraySizeOf(const XLOPER& record) {
    const bool is_full = record.val.array.rows == 0 && IsFullHeight(record.val.array.lparray);
    return {is_full ? RecordFamily<XLOPER>::kMaxRows : record.val.array.rows, record.val.array.columns};
}

/// False for an array record whose cells cannot exist: with a negative count, with no block for its cells, or
/// with more of them than fit into memory.
template <class Record>
bool IsWellFormedArray(const Record& record) {
    const XlSize size = ArraySizeOf(record);
    if (size.rows < 0 || size.columns < 0)
        return false;
    const std::uint64_t count =
        static_cast<std::uint64_t>(size.rows) * static_cast<std::uint64_t>(size.columns);
    constexpr std::uint64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Record);
    return count == 0 || (record.val.array.lparray && count <= most);
}

/// The number of cells of an array record; 0 for one that is not well formed.
template <class Record>
std::size_t CellCountOf(const Record& record) {
    const XlSize size = ArraySizeOf(record);
    return IsWellFormedArray(record)
               ? static_cast<std::size_t>(size.rows) * static_cast<std::size_t>(size.columns)
               : 0;
}

/// True if a record of that type points at memory of its own: a text, a reference, an array.
inline bool PointsAtMemory(std::uint16_t type) {
    return type == xltypeStr || type == xltypeRef || type == xltypeMulti;
}

/// True if a new array of the family may have that size.
template <class Record>
bool IsWithinLimits(const XlSize& size) {
    return size.rows >= 0 && size.rows <= RecordFamily<Record>::kMaxRows && size.columns >= 0 &&
           size.columns <= RecordFamily<Record>::kMaxColumns;
}

} // namespace metrify
