#include "xllrt/record_memory.h"

#include "xllrt/code_page.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

namespace metrify {

namespace {

// A fresh record is written `Record()`: with parentheses every byte of the union is zero, with braces only
// those of its first member.

// ---- Release

template <class Record>
void FreeCells(Record* cells, std::size_t count) {
    std::for_each(cells, cells + count, [](Record& cell) { DeepFree(cell); });
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
        FreeCells(record.val.array.lparray, CellCountOf(record));
        break;
    default:
        break;
    }
    record = Record();
}

// ---- Texts

// A counted text in place of the record's old content. The first unit takes the length as its width has it.
template <class Record, class Unit>
void StoreText(Record& record, std::basic_string_view<Unit> text) {
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
    if (text.size() > kMaxNarrowText) {
        return false;
    }
    // A code page with more than one byte for a character can make a text longer.
    const std::string narrow = ToNarrow(text);
    if (narrow.size() > kMaxNarrowText) {
        return false;
    }
    StoreText(target, std::string_view(narrow));
    return true;
}

// ---- References

// Stores one bound of a rectangle; false if the field has no room for it.
template <class Field, class Value>
bool StoreBound(Field& field, Value bound) {
    if constexpr (sizeof(Field) < sizeof(Value)) {
        if (bound < 0 || bound > std::numeric_limits<Field>::max()) {
            return false;
        }
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
    if (!from) {
        return true;
    }
    // The list goes on behind its declared single rectangle.
    const std::size_t rectangles = sizeof(typename RecordFamily<To>::Rectangle) * from->count;
    const std::size_t size = std::max(sizeof(List), offsetof(List, reflft) + rectangles);
    std::unique_ptr<void, RawRelease> block(::operator new(size));
    auto* list = new (block.get()) List{};
    list->count = from->count;
    auto* to_rectangle = static_cast<typename RecordFamily<To>::Rectangle*>(list->reflft);
    const auto* from_rectangle = static_cast<const typename RecordFamily<From>::Rectangle*>(from->reflft);
    for (std::size_t i = 0; i < from->count; ++i) {
        if (!CopyRectangle(to_rectangle[i], from_rectangle[i])) {
            return false;
        }
    }
    target.val.mref.lpmref = list;
    static_cast<void>(block.release());
    allocated = true;
    return true;
}

// ---- Arrays

template <class Record>
bool StoreCells(Record& record, const XlSize& size) {
    if (!IsWithinLimits<Record>(size)) {
        return false;
    }
    const std::size_t count = static_cast<std::size_t>(size.rows) * static_cast<std::size_t>(size.columns);
    // No block for no cells, so that a block with a count of 0 is one of 65536 rows.
    auto cells = count == 0 ? nullptr : std::make_unique<Record[]>(count);
    record = Record();
    record.xltype = xltypeMulti;
    StoreField(record.val.array.rows, size.rows);
    StoreField(record.val.array.columns, size.columns);
    record.val.array.lparray = cells.release();
    return true;
}

template <class To, class From>
bool CopyCells(To& target, const From& source) {
    RecordOwner<To> copy;
    if (!StoreCells(copy.record, ArraySizeOf(source))) {
        return false;
    }
    const std::size_t count = source.val.array.lparray ? CellCountOf(source) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        bool cell_allocated = false;
        if (!CopyRecord(&copy.record.val.array.lparray[i], &source.val.array.lparray[i], cell_allocated)) {
            return false;
        }
    }
    target = copy.Release();
    return true;
}

// ---- Copies

// What needs no memory of its own.
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
    if (!target || !source || static_cast<const void*>(target) == source) {
        return true;
    }
    To copy = To();
    if (!CopyByType(copy, *source, allocated)) {
        return false;
    }
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
    StoreText(record, text.substr(0, kMaxNarrowText));
}

void MakeText(XLOPER& record, std::u16string_view text) {
    MakeText(record, ToNarrow(text.substr(0, kMaxNarrowText)));
}

void MakeText(XLOPER12& record, std::string_view text) {
    StoreText(record, std::u16string_view(ToWide(text)));
}

void MakeText(XLOPER12& record, std::u16string_view text) {
    StoreText(record, text);
}

bool MakeCells(XLOPER& record, const XlSize& size) {
    return StoreCells(record, size);
}

bool MakeCells(XLOPER12& record, const XlSize& size) {
    return StoreCells(record, size);
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
