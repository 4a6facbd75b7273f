#include "host/sheet/cell_records.h"

#include "xllrt/text/code_page.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <vector>

namespace metrify::host {

namespace {

// ---- From records

std::u16string TextFrom(const XLOPER& record) {
    return ToWide(TextOf(record));
}

std::u16string TextFrom(const XLOPER12& record) {
    return std::u16string(TextOf(record));
}

template <class Rectangle>
Area AreaFrom(const Rectangle& rectangle) {
    return {rectangle.rwFirst, rectangle.rwLast, rectangle.colFirst, rectangle.colLast};
}

template <class Record>
bool ReadAny(const Record& record, IDSHEET current_sheet, CellValue& value);

template <class Record>
bool ReadReference(const Record& record, CellValue& value) {
    if (!record.val.mref.lpmref)
        return false;
    Reference reference{record.val.mref.idSheet, {}, false};
    const auto* rectangles =
        static_cast<const typename RecordFamily<Record>::Rectangle*>(record.val.mref.lpmref->reflft);
    for (std::size_t i = 0; i < record.val.mref.lpmref->count; ++i)
        reference.areas.push_back(AreaFrom(rectangles[i]));
    value = CellValue(std::move(reference));
    return true;
}

template <class Record>
bool ReadArray(const Record& record, IDSHEET current_sheet, CellValue& value) {
    const XlSize size = ArraySizeOf(record);
    if (!IsWithinLimits<Record>(size) || !record.val.array.lparray)
        return false;
    CellArray array{size.rows, size.columns, {}};
    array.cells.resize(CellCountOf(record));
    for (std::size_t i = 0; i < array.cells.size(); ++i) {
        CellValue& cell = array.cells[i];
        // A cell holds a single value, so arrays do not nest.
        if (!ReadAny(record.val.array.lparray[i], current_sheet, cell) || cell.Is<CellArray>() ||
            cell.Is<Reference>())
            return false;
        if (cell.Is<MissingArgument>())
            cell = CellValue();
    }
    value = CellValue(std::move(array));
    return true;
}

template <class Record>
bool ReadAny(const Record& record, IDSHEET current_sheet, CellValue& value) {
    switch (TypeOf(record)) {
    case xltypeNum:
        value = record.val.num;
        return true;
    case xltypeStr:
        value = TextFrom(record);
        return record.val.str != nullptr;
    case xltypeBool:
        value = record.val.xbool != 0;
        return true;
    case xltypeErr:
        value = CellError{record.val.err};
        return true;
    case xltypeInt:
        value = std::int32_t{record.val.w};
        return true;
    case xltypeNil:
        value = CellValue();
        return true;
    case xltypeMissing:
        value = MissingArgument{};
        return true;
    case xltypeSRef:
        value = Reference{current_sheet, {AreaFrom(record.val.sref.ref)}, true};
        return true;
    case xltypeRef:
        return ReadReference(record, value);
    case xltypeMulti:
        return ReadArray(record, current_sheet, value);
    default:
        return false;
    }
}

// ---- To records

template <class Record>
void WriteError(int code, Record& record) {
    record.xltype = xltypeErr;
    StoreField(record.val.err, code);
}

template <class Record>
void WriteInteger(std::int32_t integer, Record& record) {
    using Field = decltype(record.val.w);
    if (integer < std::numeric_limits<Field>::min() || integer > std::numeric_limits<Field>::max()) {
        record.xltype = xltypeNum;
        record.val.num = integer;
    } else {
        record.xltype = xltypeInt;
        record.val.w = static_cast<Field>(integer);
    }
}

template <class Record>
bool FitsFamily(const Area& area) {
    return area.first_row >= 0 && area.first_column >= 0 && area.last_row < RecordFamily<Record>::kMaxRows &&
           area.last_column < RecordFamily<Record>::kMaxColumns;
}

template <class Rectangle>
void WriteArea(const Area& area, Rectangle& rectangle) {
    StoreField(rectangle.rwFirst, area.first_row);
    StoreField(rectangle.rwLast, area.last_row);
    StoreField(rectangle.colFirst, area.first_column);
    StoreField(rectangle.colLast, area.last_column);
}

template <class Record>
void WriteReference(const Reference& reference, Record& record) {
    if (!std::all_of(reference.areas.begin(), reference.areas.end(), FitsFamily<Record>) ||
        reference.areas.empty()) {
        WriteError(xlerrRef, record);
        return;
    }
    if (reference.is_simple) {
        record.xltype = xltypeSRef;
        record.val.sref.count = 1;
        WriteArea(reference.areas.front(), record.val.sref.ref);
        return;
    }
    // The list is longer than the single rectangle that it declares. Only the copy is kept.
    using List = typename RecordFamily<Record>::RectangleList;
    std::vector<List> storage(reference.areas.size());
    storage.front().count = static_cast<std::uint16_t>(reference.areas.size());
    auto* rectangles = static_cast<typename RecordFamily<Record>::Rectangle*>(storage.front().reflft);
    for (const Area& area : reference.areas)
        WriteArea(area, *rectangles++);
    Record source = Record();
    source.xltype = xltypeRef;
    source.val.mref.lpmref = storage.data();
    source.val.mref.idSheet = reference.sheet;
    bool allocated = false;
    CopyRecord(&record, &source, allocated);
}

template <class Record>
void WriteAny(const CellValue& value, Record& record);

template <class Record>
void WriteArray(const CellArray& array, Record& record) {
    if (!MakeCells(record, {array.rows, array.columns})) {
        WriteError(xlerrValue, record);
        return;
    }
    for (std::size_t i = 0; i < array.cells.size(); ++i)
        WriteAny(array.cells[i], record.val.array.lparray[i]);
}

template <class Record>
void WriteAny(const CellValue& value, Record& record) {
    record = Record();
    const auto write = [&record](const auto& content) {
        using Kind = std::remove_cvref_t<decltype(content)>;
        if constexpr (std::is_same_v<Kind, EmptyCell>) {
            record.xltype = xltypeNil;
        } else if constexpr (std::is_same_v<Kind, MissingArgument>) {
            record.xltype = xltypeMissing;
        } else if constexpr (std::is_same_v<Kind, double>) {
            record.xltype = xltypeNum;
            record.val.num = content;
        } else if constexpr (std::is_same_v<Kind, std::u16string>) {
            MakeText(record, std::u16string_view(content));
        } else if constexpr (std::is_same_v<Kind, bool>) {
            record.xltype = xltypeBool;
            record.val.xbool = content ? 1 : 0;
        } else if constexpr (std::is_same_v<Kind, CellError>) {
            WriteError(content.code, record);
        } else if constexpr (std::is_same_v<Kind, std::int32_t>) {
            WriteInteger(content, record);
        } else if constexpr (std::is_same_v<Kind, Reference>) {
            WriteReference(content, record);
        } else {
            WriteArray(content, record);
        }
    };
    std::visit(write, value.content);
}

template <class Record>
const void* AnyMemory(const Record& record) {
    switch (TypeOf(record)) {
    case xltypeStr:
        return record.val.str;
    case xltypeRef:
        return record.val.mref.lpmref;
    case xltypeMulti:
        return record.val.array.lparray;
    default:
        return nullptr;
    }
}

} // namespace

bool ReadRecord(const XLOPER& record, IDSHEET current_sheet, CellValue& value) {
    return ReadAny(record, current_sheet, value);
}

bool ReadRecord(const XLOPER12& record, IDSHEET current_sheet, CellValue& value) {
    return ReadAny(record, current_sheet, value);
}

void WriteRecord(const CellValue& value, XLOPER& record) {
    WriteAny(value, record);
}

void WriteRecord(const CellValue& value, XLOPER12& record) {
    WriteAny(value, record);
}

const void* MemoryOf(const XLOPER& record) {
    return AnyMemory(record);
}

const void* MemoryOf(const XLOPER12& record) {
    return AnyMemory(record);
}

} // namespace metrify::host
