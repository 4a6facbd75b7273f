#include "xllrt/value/record_memory.h"

#include "xllrt/text/code_page.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

namespace metrify {

namespace {

// A new record is written `Record()`: with parentheses every byte of the union is zero, with braces only
// those of its first member.

// ---- Release

// Only the narrow family has a count that is too short for its largest array.
void NoteHeight(const XLOPER& array, std::int32_t rows) {
    if (rows == RecordFamily<XLOPER>::kMaxRows && array.val.array.lparray)
        NoteFullHeight(array.val.array.lparray);
}

void NoteHeight(const XLOPER12& /*array*/, std::int32_t /*rows*/) {}

void ForgetHeight(const XLOPER& array) {
    if (array.val.array.rows == 0)
        ForgetFullHeight(array.val.array.lparray);
}

void ForgetHeight(const XLOPER12& /*array*/) {}

template <class Record>
void FreeCells(Record& array) {
    Record* cells = array.val.array.lparray;
    std::for_each_n(cells, CellCountOf(array), [](Record& cell) { DeepFree(cell); });
    ForgetHeight(array);
    delete[] cells;
}

template <class Record>
void DeepFreeRecord(Record& record) {
    switch (TypeOf(record)) {
    case xltypeStr:
        delete[] record.val.str;
        break;
    case xltypeRef:
        ::operator delete(record.val.mref.lpmref);
        break;
    case xltypeMulti:
        FreeCells(record);
        break;
    default:
        break;
    }
    record = Record();
}

// ---- Texts

// Makes the record a counted text. The first unit holds the length, truncated to its width. Narrow units in a
// wide record are ASCII.
template <class Record, class Source>
void StoreText(Record& record, std::basic_string_view<Source> text) {
    using Unit = typename RecordFamily<Record>::Unit;
    auto counted = std::make_unique<Unit[]>(text.size() + 1);
    counted[0] = static_cast<Unit>(static_cast<typename RecordFamily<Record>::Length>(text.size()));
    std::copy(text.begin(), text.end(), &counted[1]);
    record = Record();
    record.xltype = xltypeStr;
    record.val.str = counted.release();
}

bool CopyText(XLOPER& target, const XLOPER& source) {
    StoreText(target, TextOf(source));
    return true;
}

bool CopyText(XLOPER12& target, const XLOPER12& source) {
    StoreText(target, TextOf(source));
    return true;
}

bool CopyText(XLOPER12& target, const XLOPER& source) {
    MakeText(target, TextOf(source));
    return true;
}

bool CopyText(XLOPER& target, const XLOPER12& source) {
    const std::u16string_view text = TextOf(source);
    if (text.size() > RecordFamily<XLOPER>::kMaxText)
        return false;
    // In a code page with more than one byte for a character the text may become longer, and its count wraps.
    StoreText(target, std::string_view(ToNarrow(text)));
    return true;
}

// ---- References

// Stores one bound of a rectangle; false if it does not fit into the field.
template <class Field, class Value>
bool StoreBound(Field& field, Value bound) {
    if constexpr (sizeof(Field) < sizeof(Value)) {
        if (bound < 0 || bound > std::numeric_limits<Field>::max())
            return false;
    }
    field = static_cast<Field>(bound);
    return true;
}

template <class To, class From>
bool CopyRectangle(To& target, const From& source) {
    return StoreBound(target.rwFirst, source.rwFirst) && StoreBound(target.rwLast, source.rwLast) &&
           StoreBound(target.colFirst, source.colFirst) && StoreBound(target.colLast, source.colLast);
}

struct RawRelease {
    void operator()(void* block) const { ::operator delete(block); }
};

template <class To, class From>
bool CopyReference(To& target, const From& source, bool& allocated) {
    using List = typename RecordFamily<To>::RectangleList;
    const auto* from = source.val.mref.lpmref;
    target.val.mref.idSheet = source.val.mref.idSheet;
    if (!from)
        return true;
    // The list continues after its single declared rectangle.
    const std::size_t rectangles = sizeof(typename RecordFamily<To>::Rectangle) * from->count;
    const std::size_t size = std::max(sizeof(List), offsetof(List, reflft) + rectangles);
    std::unique_ptr<void, RawRelease> block(::operator new(size));
    auto* list = new (block.get()) List{};
    list->count = from->count;
    auto* to_rectangle = static_cast<typename RecordFamily<To>::Rectangle*>(list->reflft);
    const auto* from_rectangle = static_cast<const typename RecordFamily<From>::Rectangle*>(from->reflft);
    for (std::size_t i = 0; i < from->count; ++i)
        if (!CopyRectangle(to_rectangle[i], from_rectangle[i]))
            return false;
    target.val.mref.lpmref = list;
    static_cast<void>(block.release());
    allocated = true;
    return true;
}

// ---- Arrays

template <class Record>
void StoreCells(Record& record, const XlSize& size) {
    const std::size_t count = static_cast<std::size_t>(size.rows) * static_cast<std::size_t>(size.columns);
    auto cells = count == 0 ? nullptr : std::make_unique<Record[]>(count);
    Record array = Record();
    array.xltype = xltypeMulti;
    StoreField(array.val.array.rows, size.rows);
    StoreField(array.val.array.columns, size.columns);
    array.val.array.lparray = cells.get();
    NoteHeight(array, size.rows);
    record = array;
    static_cast<void>(cells.release());
}

template <class Record>
bool MakeCellsOf(Record& record, const XlSize& size) {
    if (!IsWithinLimits<Record>(size))
        return false;
    StoreCells(record, size);
    return true;
}

// Only from wide to narrow can an array be too large.
template <class To, class From>
bool CanCopyCells(const From& source) {
    const bool narrows = std::is_same_v<From, XLOPER12> && std::is_same_v<To, XLOPER>;
    return IsWellFormedArray(source) && (!narrows || IsWithinLimits<To>(ArraySizeOf(source)));
}

template <class To, class From>
bool CopyCells(To& target, const From& source) {
    if (!CanCopyCells<To>(source))
        return false;
    RecordOwner<To> copy;
    StoreCells(copy.record, ArraySizeOf(source));
    const std::size_t count = CellCountOf(source);
    for (std::size_t i = 0; i < count; ++i) {
        bool cell_allocated = false;
        if (!CopyRecord(&copy.record.val.array.lparray[i], &source.val.array.lparray[i], cell_allocated))
            return false;
    }
    target = copy.Release();
    return true;
}

// ---- Copies

// Copies the types that point at no memory.
template <class To, class From>
void CopyPlain(To& target, const From& source) {
    switch (TypeOf(source)) {
    case xltypeNum:
        target.val.num = source.val.num;
        break;
    case xltypeBool:
        StoreField(target.val.xbool, source.val.xbool);
        break;
    case xltypeErr:
        StoreField(target.val.err, source.val.err);
        break;
    case xltypeInt:
        StoreField(target.val.w, source.val.w);
        break;
    case xltypeBigData:
        target.val.bigdata.h.hdata = source.val.bigdata.h.hdata;
        target.val.bigdata.cbData = source.val.bigdata.cbData;
        break;
    default:
        break;
    }
}

template <class To, class From>
bool CopyByType(To& target, const From& source, bool& allocated) {
    target.xltype = TypeOf(source);
    switch (TypeOf(source)) {
    case xltypeFlow:
        return false;
    case xltypeStr:
        return allocated = CopyText(target, source);
    case xltypeMulti:
        return allocated = CopyCells(target, source);
    case xltypeRef:
        return CopyReference(target, source, allocated);
    case xltypeSRef:
        target.val.sref.count = source.val.sref.count;
        return CopyRectangle(target.val.sref.ref, source.val.sref.ref);
    default:
        CopyPlain(target, source);
        return true;
    }
}

template <class To, class From>
bool CopyAnyRecord(To* target, const From* source, bool& allocated) {
    allocated = false;
    if (!target || !source || static_cast<const void*>(target) == source)
        return true;
    To copy = To();
    if (!CopyByType(copy, *source, allocated))
        return false;
    *target = copy;
    return true;
}

} // namespace

void DeepFree(XLOPER& record) {
    DeepFreeRecord(record);
}

void DeepFree(XLOPER12& record) {
    DeepFreeRecord(record);
}

void MakeText(XLOPER& record, std::string_view text) {
    StoreText(record, text.substr(0, RecordFamily<XLOPER>::kMaxText));
}

void MakeText(XLOPER& record, std::u16string_view text) {
    MakeText(record, ToNarrow(text.substr(0, RecordFamily<XLOPER>::kMaxText)));
}

void MakeText(XLOPER12& record, std::string_view text) {
    const bool is_ascii = std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    if (is_ascii)
        StoreText(record, text);
    else
        StoreText(record, std::u16string_view(ToWide(text)));
}

void MakeText(XLOPER12& record, std::u16string_view text) {
    StoreText(record, text);
}

bool MakeCells(XLOPER& record, const XlSize& size) {
    return MakeCellsOf(record, size);
}

bool MakeCells(XLOPER12& record, const XlSize& size) {
    return MakeCellsOf(record, size);
}

bool CopyRecord(XLOPER* target, const XLOPER* source, bool& allocated) {
    return CopyAnyRecord(target, source, allocated);
}

bool CopyRecord(XLOPER12* target, const XLOPER12* source, bool& allocated) {
    return CopyAnyRecord(target, source, allocated);
}

bool CopyRecord(XLOPER12* target, const XLOPER* source, bool& allocated) {
    return CopyAnyRecord(target, source, allocated);
}

bool CopyRecord(XLOPER* target, const XLOPER12* source, bool& allocated) {
    return CopyAnyRecord(target, source, allocated);
}

} // namespace metrify
