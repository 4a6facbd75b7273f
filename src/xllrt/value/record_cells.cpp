#include "xllrt/value/record_cells.h"

#include "xllrt/fault/exceptions.h"
#include "xllrt/text/message_catalogue.h"

namespace metrify {

namespace {

template <class Record>
Record* CellOfArray(Record& array, std::int32_t row, std::int32_t column) {
    const XlSize size = ArraySizeOf(array);
    if (row < 0 || row >= size.rows || column < 0 || column >= size.columns || !array.val.array.lparray)
        throw CXlOutOfRangeException(kMessageIndexOutOfRange);
    const auto index = static_cast<std::size_t>(row) * static_cast<std::size_t>(size.columns) +
                       static_cast<std::size_t>(column);
    return &array.val.array.lparray[index];
}

template <class Record>
Record* CellOfRecord(Record* record, std::int32_t row, std::int32_t column) {
    if (!record)
        throw CXlIllegalArgumentException(kMessageIllegalArgument);
    const std::uint16_t type = TypeOf(*record);
    if (type == xltypeMulti)
        return CellOfArray(*record, row, column);
    if (row != 0 || column != 0)
        throw CXlOutOfRangeException(kMessageIndexOutOfRange);
    if (type != xltypeNum && type != xltypeBool && type != xltypeInt && type != xltypeStr)
        throw CXlBadOperTypeException(kMessageBadOperType);
    return record;
}

} // namespace

XLOPER* CellOf(XLOPER* record, std::int32_t row, std::int32_t column) {
    return CellOfRecord(record, row, column);
}

XLOPER12* CellOf(XLOPER12* record, std::int32_t row, std::int32_t column) {
    return CellOfRecord(record, row, column);
}

} // namespace metrify
