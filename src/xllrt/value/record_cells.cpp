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
    if (!IsScalarType(type))
        throw CXlBadOperTypeException(kMessageBadOperType);
    return record;
}

// ---- Dimensions

std::int32_t Extent(std::int64_t first, std::int64_t last) {
    return static_cast<std::int32_t>(last - first + 1);
}

template <class Rectangle>
XlSize SizeOf(const Rectangle& rectangle) {
    return {Extent(rectangle.rwFirst, rectangle.rwLast), Extent(rectangle.colFirst, rectangle.colLast)};
}

template <class Record>
XlSize DimensionsOfRecord(const Record& record) {
    const std::uint16_t type = TypeOf(record);
    if (type == xltypeMulti)
        return ArraySizeOf(record);
    return IsScalarType(type) ? XlSize{1, 1} : XlSize{0, 0};
}

template <class Record>
XlSize RefDimensionsOfRecord(const Record& record, bool noScalars) {
    const std::uint16_t type = TypeOf(record);
    if (type == xltypeMulti)
        return ArraySizeOf(record);
    if (type == xltypeSRef)
        return SizeOf(record.val.sref.ref);
    const auto* list = type == xltypeRef ? record.val.mref.lpmref : nullptr;
    if (list && list->count > 0)
        return SizeOf(list->reflft[0]);
    return noScalars ? XlSize{0, 0} : DimensionsOfRecord(record);
}

} // namespace

bool IsScalarType(std::uint16_t type) {
    return type == xltypeNum || type == xltypeStr || type == xltypeBool || type == xltypeInt;
}

XLOPER* CellOf(XLOPER* record, std::int32_t row, std::int32_t column) {
    return CellOfRecord(record, row, column);
}

XLOPER12* CellOf(XLOPER12* record, std::int32_t row, std::int32_t column) {
    return CellOfRecord(record, row, column);
}

XlSize DimensionsOf(const XLOPER& record) {
    return DimensionsOfRecord(record);
}

XlSize DimensionsOf(const XLOPER12& record) {
    return DimensionsOfRecord(record);
}

XlSize RefDimensionsOf(const XLOPER& record, bool noScalars) {
    return RefDimensionsOfRecord(record, noScalars);
}

XlSize RefDimensionsOf(const XLOPER12& record, bool noScalars) {
    return RefDimensionsOfRecord(record, noScalars);
}

} // namespace metrify
