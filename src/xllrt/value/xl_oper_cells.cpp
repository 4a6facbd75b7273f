// Arrays: making and filling them, their cells and their dimensions.

#include "xllrt/fault/exceptions.h"
#include "xllrt/text/message_catalogue.h"
#include "xllrt/value/host_link.h"
#include "xllrt/value/record_cells.h"
#include "xllrt/value/record_memory.h"
#include "xllrt/value/xl_cell_view.h"

#include <algorithm>

namespace metrify {

namespace {

// What counts as one cell where dimensions are asked for.
bool IsScalarType(std::uint16_t type) {
    return type == xltypeNum || type == xltypeStr || type == xltypeBool || type == xltypeInt;
}

// What may stand in every cell of an array.
bool IsFillType(std::uint16_t type) {
    return IsScalarType(type) || type == xltypeErr || type == xltypeNil;
}

std::int32_t Extent(std::int64_t first, std::int64_t last) {
    return static_cast<std::int32_t>(last - first + 1);
}

template <class Rectangle>
XlSize SizeOf(const Rectangle& rectangle) {
    return {Extent(rectangle.rwFirst, rectangle.rwLast), Extent(rectangle.colFirst, rectangle.colLast)};
}

template <class Record>
XlSize DimensionsOf(const Record& record) {
    const std::uint16_t type = TypeOf(record);
    if (type == xltypeMulti)
        return ArraySizeOf(record);
    return IsScalarType(type) ? XlSize{1, 1} : XlSize{0, 0};
}

template <class Record>
XlSize RefDimensionsOf(const Record& record, bool noScalars) {
    const std::uint16_t type = TypeOf(record);
    if (type == xltypeMulti)
        return ArraySizeOf(record);
    if (type == xltypeSRef)
        return SizeOf(record.val.sref.ref);
    const auto* list = type == xltypeRef ? record.val.mref.lpmref : nullptr;
    if (list && list->count > 0)
        return SizeOf(list->reflft[0]);
    return noScalars ? XlSize{0, 0} : DimensionsOf(record);
}

} // namespace

// ---- Making and filling

template <class Record>
bool CXlOper::MakeArrayOf(const XlSize& size) {
    Record record = Record();
    if (!MakeCells(record, size))
        return false;
    Store(record, RecordFamily<Record>::kValid | RecordFamily<Record>::kOwned);
    return true;
}

bool CXlOper::MakeArray(std::int32_t rows, std::int32_t columns, const CXlOper* fill) {
    // The old content goes first, and the value to fill with may be a part of it.
    const CXlOper pattern = fill && IsFillType(fill->Type()) ? *fill : CXlOper();
    Free();
    const XlSize size{rows, columns};
    if (!(BuildsWide() ? MakeArrayOf<XLOPER12>(size) : MakeArrayOf<XLOPER>(size)))
        return false;
    Fill(fill ? &pattern : nullptr);
    return true;
}

template <class Record>
void CXlOper::FillSide(const CXlOper& source) {
    RecordOwner<Record> pattern;
    bool allocated = false;
    if (!source.CopyInto(pattern.record, allocated))
        throw CXlStringTooLongException(kMessageStringTooLong);
    Record& array = *Side<Record>();
    const bool owned = (state_ & RecordFamily<Record>::kOwned) != 0;
    std::for_each_n(array.val.array.lparray, CellCountOf(array), [&](Record& cell) {
        if (owned)
            DeepFree(cell);
        if (!CopyRecord(&cell, &pattern.record, allocated))
            throw CXlStringTooLongException(kMessageStringTooLong);
    });
}

void CXlOper::Fill(const CXlOper* source) {
    if (!IsType(xltypeMulti))
        throw CXlIllegalArgumentException(kMessageIllegalArgument);
    if (!source)
        return;
    if (!IsFillType(source->Type()))
        throw CXlIllegalArgumentException(kMessageSourceNotScalar);
    if (HasValue12())
        FillSide<XLOPER12>(*source);
    else
        FillSide<XLOPER>(*source);
}

// ---- Cells

// The view of a cell, for an index that the family knows.
template <class Record>
CXlCellView CXlOper::ViewCell(std::int32_t row, std::int32_t column) {
    if (row < 0 || row >= RecordFamily<Record>::kMaxRows || column < 0 ||
        column >= RecordFamily<Record>::kMaxColumns)
        throw CXlOutOfRangeException(kMessageIndexOutOfRange);
    Record* own = Side<Record>();
    Record* cell = CellOf(own, row, column);
    // A view of a view must not depend on the first one, which is gone sooner.
    return cell == own && !IsCellView() ? CXlCellView(*this) : CXlCellView(cell);
}

CXlCellView CXlOper::Cell(std::int32_t row, std::int32_t column) {
    if (HasValue12())
        return ViewCell<XLOPER12>(row, column);
    if (HasValue4())
        return ViewCell<XLOPER>(row, column);
    throw CXlOutOfRangeException(kMessageIndexOutOfRange);
}

const CXlCellView CXlOper::Cell(std::int32_t row, std::int32_t column) const {
    return const_cast<CXlOper*>(this)->Cell(row, column);
}

CXlCellView CXlOper::VectorCell(std::int32_t index) {
    const XlSize size = Dimensions();
    if (size.rows == 1)
        return Cell(0, index);
    if (size.columns == 1)
        return Cell(index, 0);
    throw CXlOutOfRangeException(kMessageIndexOutOfRange);
}

const CXlCellView CXlOper::VectorCell(std::int32_t index) const {
    return const_cast<CXlOper*>(this)->VectorCell(index);
}

// ---- Dimensions

XlSize CXlOper::Dimensions() const {
    return Visit([](const auto& record) { return DimensionsOf(record); });
}

XlSize CXlOper::RefDimensions(bool noScalars) const {
    return Visit([noScalars](const auto& record) { return RefDimensionsOf(record, noScalars); });
}

bool CXlOper::IsVector() const {
    const XlSize size = Dimensions();
    return size.rows == 1 || size.columns == 1;
}

} // namespace metrify
