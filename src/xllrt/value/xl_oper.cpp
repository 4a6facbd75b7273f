#include "xllrt/value/xl_oper.h"

#include "xllrt/fault/exceptions.h"
#include "xllrt/text/message_catalogue.h"
#include "xllrt/value/host_link.h"
#include "xllrt/value/record_cells.h"
#include "xllrt/value/record_memory.h"
#include "xllrt/value/record_reading.h"
#include "xllrt/value/return_record.h"
#include "xllrt/value/thread_state.h"
#include "xllrt/value/xl_cell_view.h"

#include <algorithm>

namespace metrify {

namespace {

// What every cell of an array may be filled with.
bool IsFillType(std::uint16_t type) {
    return IsScalarType(type) || type == xltypeErr || type == xltypeNil;
}

// "Expected {0}", with the name of a type.
[[noreturn]] void ThrowExpected(unsigned type_name) {
    std::u16string message;
    FormatMessageText(message, kMessageExpected, WideMessageText(type_name));
    throw CXlConversionException(message);
}

} // namespace

// ---- Construction and release

CXlOper::CXlOper() = default;

CXlOper::CXlOper(bool value) {
    SetBool(value ? 1 : 0, false);
}

CXlOper::CXlOper(double value) {
    SetNumber(value, false);
}

CXlOper::CXlOper(const XLOPER* record) {
    if (record)
        records_.Store(*record, kValid4);
}

CXlOper::CXlOper(const XLOPER12* record) {
    if (record)
        records_.Store(*record, kValid12);
}

CXlOper::CXlOper(const CXlOper& source) {
    CopyFrom(source);
}

CXlOper& CXlOper::operator=(const CXlOper& source) {
    if (this != &source) {
        // The old content is released last: the source may be a part of it.
        CXlOper copy(source);
        Free();
        records_.MoveFrom(copy.records_);
    }
    return *this;
}

CXlOper::~CXlOper() = default;

CXlOper CXlOper::Wrap12(const XLOPER12* record) {
    return CXlOper(record);
}

CXlOper CXlOper::Wrap4(const XLOPER* record) {
    return CXlOper(record);
}

void CXlOper::Free() {
    records_.Free();
}

void CXlOper::CopyFrom(const CXlOper& source) {
    if (this != &source)
        records_.CopyFrom(source.records_);
}

// An array releases what is in it, so a cell gets a copy of what the host owns.
template <class Record>
void CXlOper::TakeRecord(const Record& record) {
    if (records_.IsCellView()) {
        CXlOper filled;
        filled.TakeFromHost(record);
        *this = filled;
        return;
    }
    Free();
    records_.Store(record, RecordFamily<Record>::kValid | RecordFamily<Record>::kHostOwned);
}

void CXlOper::TakeFromHost(XLOPER record) {
    TakeRecord(record);
}

void CXlOper::TakeFromHost(XLOPER12 record) {
    TakeRecord(record);
}

// ---- Setters

// The view of a cell has the one record that is in its array.
bool CXlOper::BuildsWide() const {
    return !Record4() || (Record12() && HostFlag());
}

template <class Setter>
void CXlOper::SetPlain(bool freeFirst, Setter setter) {
    if (freeFirst)
        Free();
    const auto build = [&]<class Record>(Record record) {
        setter(record);
        records_.Store(record, RecordFamily<Record>::kValid);
    };
    if (BuildsWide())
        build(XLOPER12());
    else
        build(XLOPER());
}

void CXlOper::SetBool(std::uint8_t value, bool freeFirst) {
    SetPlain(
        freeFirst,
        [value](auto& record) {
            record.xltype = xltypeBool;
            record.val.xbool = value != 0 ? 1 : 0;
        });
}

void CXlOper::SetNumber(double value, bool freeFirst) {
    SetPlain(
        freeFirst,
        [value](auto& record) {
            record.xltype = xltypeNum;
            record.val.num = value;
        });
}

void CXlOper::SetInt(std::int32_t value, bool freeFirst) {
    SetPlain(
        freeFirst,
        [value](auto& record) {
            record.xltype = xltypeInt;
            StoreField(record.val.w, value);
        });
}

void CXlOper::SetError(int code, bool freeFirst) {
    SetPlain(
        freeFirst,
        [code](auto& record) {
            record.xltype = xltypeErr;
            StoreField(record.val.err, code);
        });
}

void CXlOper::SetMissing(bool freeFirst) {
    SetPlain(
        freeFirst, [](auto& record) { record.xltype = xltypeMissing; });
}

template <class Text>
void CXlOper::SetAnyText(Text text, bool freeFirst) {
    const auto build = [&]<class Record>(Record record) {
        // The old content is released last: the text may be a part of it.
        MakeText(record, text);
        if (freeFirst)
            Free();
        records_.Store(record, RecordFamily<Record>::kValid | RecordFamily<Record>::kOwned);
    };
    if (BuildsWide())
        build(XLOPER12());
    else
        build(XLOPER());
}

void CXlOper::SetText(std::string_view text, bool freeFirst) {
    SetAnyText(text, freeFirst);
}

void CXlOper::SetText(std::u16string_view text, bool freeFirst) {
    SetAnyText(text, freeFirst);
}

void CXlOper::SetText(const char* text, bool freeFirst) {
    SetAnyText(text ? std::string_view(text) : std::string_view(), freeFirst);
}

void CXlOper::SetText(const XCHAR* text, bool freeFirst) {
    SetAnyText(text ? std::u16string_view(text) : std::u16string_view(), freeFirst);
}

// ---- Arrays

template <class Record>
bool CXlOper::MakeArrayOf(const XlSize& size) {
    Record record = Record();
    if (!MakeCells(record, size))
        return false;
    records_.Store(record, RecordFamily<Record>::kValid | RecordFamily<Record>::kOwned);
    return true;
}

bool CXlOper::MakeArray(std::int32_t rows, std::int32_t columns, const CXlOper* fill) {
    // The old content is released first, and the value to fill with may be a part of it.
    const CXlOper pattern = fill && IsFillType(fill->Type()) ? *fill : CXlOper();
    Free();
    const XlSize size{rows, columns};
    if (!(BuildsWide() ? MakeArrayOf<XLOPER12>(size) : MakeArrayOf<XLOPER>(size)))
        return false;
    Fill(fill ? &pattern : nullptr);
    return true;
}

template <class Record>
void CXlOper::FillArray(const CXlOper& source) {
    RecordOwner<Record> pattern;
    bool allocated = false;
    if (!source.records_.CopyInto(pattern.record, allocated))
        throw CXlStringTooLongException(kMessageStringTooLong);
    Record& array = *records_.Get<Record>();
    const bool owned = records_.IsOwned<Record>();
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
    if (records_.IsValid<XLOPER12>())
        FillArray<XLOPER12>(*source);
    else
        FillArray<XLOPER>(*source);
}

// ---- Cells

// The view of a cell, for an index that the family knows.
template <class Record>
CXlCellView CXlOper::ViewCell(std::int32_t row, std::int32_t column) {
    if (row < 0 || row >= RecordFamily<Record>::kMaxRows || column < 0 ||
        column >= RecordFamily<Record>::kMaxColumns)
        throw CXlOutOfRangeException(kMessageIndexOutOfRange);
    Record* own = records_.Get<Record>();
    Record* cell = CellOf(own, row, column);
    // A view of a view must not depend on the first one, which is destroyed earlier.
    return cell == own && !records_.IsCellView() ? CXlCellView(*this) : CXlCellView(cell);
}

CXlCellView CXlOper::Cell(std::int32_t row, std::int32_t column) {
    if (records_.IsValid<XLOPER12>())
        return ViewCell<XLOPER12>(row, column);
    if (records_.IsValid<XLOPER>())
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

// ---- Types and dimensions

std::uint16_t CXlOper::Type() const {
    return records_.Visit([](const auto& record) { return TypeOf(record); });
}

XlSize CXlOper::Dimensions() const {
    return records_.Visit([](const auto& record) { return DimensionsOf(record); });
}

XlSize CXlOper::RefDimensions(bool noScalars) const {
    return records_.Visit([noScalars](const auto& record) { return RefDimensionsOf(record, noScalars); });
}

bool CXlOper::IsVector() const {
    const XlSize size = Dimensions();
    return size.rows == 1 || size.columns == 1;
}

// ---- Reading

double CXlOper::ToNumber(bool strict) const {
    double value = 0.0;
    if (!records_.Visit([&](const auto& record) { return RecordToNumber(record, value); }) && strict)
        ThrowExpected(kMessageNumber);
    return value;
}

bool CXlOper::ToBool(bool strict) const {
    bool value = false;
    if (!records_.Visit([&](const auto& record) { return RecordToBool(record, value); }) && strict)
        ThrowExpected(kMessageBoolean);
    return value;
}

template <class Text>
Text CXlOper::ToAnyText(bool strict) const {
    Text text;
    if (!records_.IsValid<XLOPER12>() && !records_.IsValid<XLOPER>()) {
        if (strict)
            ThrowExpected(kMessageString);
        return text;
    }
    if (strict && !IsString())
        throw CXlConversionException(kMessageConversionError);
    // The text of an error is for records only, a value that is an error reads as no text.
    if (IsError())
        return text;
    records_.Visit([&text](const auto& record) { RecordToText(record, text); });
    return text;
}

std::string CXlOper::ToText(bool strict) const {
    return ToAnyText<std::string>(strict);
}

std::u16string CXlOper::ToWideText(bool strict) const {
    return ToAnyText<std::u16string>(strict);
}

// ---- Returning to the host

template <class Record>
Record* CXlOper::ReturnRecord(Record& kept) {
    Record returned = Record();
    bool allocated = false;
    const bool keeps_memory = (kept.xltype & xlbitDLLFree) != 0;
    // What was returned before is released last: a wrapped record may point into it, and is copied then.
    if (records_.IsValid<Record>() && !records_.IsHostOwned<Record>() &&
        !(keeps_memory && IsPartOf(*records_.Get<Record>(), kept)))
        returned = records_.MoveOut<Record>(allocated);
    else if (!(records_.IsValid<XLOPER>() || records_.IsValid<XLOPER12>()) ||
             !records_.CopyInto(returned, allocated))
        returned = ValueErrorRecord<Record>();
    if (allocated)
        returned.xltype |= xlbitDLLFree;
    ResetReturnRecord(kept);
    kept = returned;
    return &kept;
}

XLOPER12* CXlOper::ReturnValue12() {
    return ReturnRecord(ThisThreadState().return12);
}

XLOPER* CXlOper::ReturnValue4() {
    return ReturnRecord(ThisThreadState().return4);
}

} // namespace metrify
