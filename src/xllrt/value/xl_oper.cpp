#include "xllrt/value/xl_oper.h"

#include "xllrt/value/host_link.h"
#include "xllrt/value/record_memory.h"

namespace metrify {

// ---- Construction and release

CXlOper::CXlOper() : narrow_(&own_narrow_), wide_(&own_wide_) {}

CXlOper::CXlOper(bool value) : CXlOper() {
    SetBool(value ? 1 : 0, false);
}

CXlOper::CXlOper(double value) : CXlOper() {
    SetNumber(value, false);
}

CXlOper::CXlOper(const XLOPER* record) : CXlOper() {
    if (record)
        Store(*record, kValid4);
}

CXlOper::CXlOper(const XLOPER12* record) : CXlOper() {
    if (record)
        Store(*record, kValid12);
}

CXlOper::CXlOper(CellTag /*tag*/, XLOPER* cell) : narrow_(cell), wide_(nullptr), state_(kValid4 | kOwned4) {}

CXlOper::CXlOper(CellTag /*tag*/, XLOPER12* cell)
    : narrow_(nullptr), wide_(cell), state_(kValid12 | kOwned12) {}

CXlOper::CXlOper(const CXlOper& source) : CXlOper() {
    CopyFrom(source);
}

CXlOper& CXlOper::operator=(const CXlOper& source) {
    if (this != &source) {
        // The old content goes last: the source may be a part of it.
        CXlOper copy(source);
        Free();
        MoveSide<XLOPER>(copy);
        MoveSide<XLOPER12>(copy);
    }
    return *this;
}

CXlOper::~CXlOper() {
    Free();
}

CXlOper CXlOper::Wrap12(const XLOPER12* record) {
    return CXlOper(record);
}

CXlOper CXlOper::Wrap4(const XLOPER* record) {
    return CXlOper(record);
}

template <class Record>
void CXlOper::FreeSide() {
    Record* record = Side<Record>();
    if (!record)
        return;
    if ((state_ & RecordFamily<Record>::kHostOwned) != 0)
        ReleaseToHost(*record);
    else if ((state_ & RecordFamily<Record>::kOwned) != 0)
        DeepFree(*record);
    *record = Record();
}

void CXlOper::Free() {
    FreeSide<XLOPER>();
    FreeSide<XLOPER12>();
    state_ = 0;
}

// ---- Copies

template <class Record>
void CXlOper::CopySide(const CXlOper& source) {
    using Family = RecordFamily<Record>;
    Record* target = Side<Record>();
    if (!target || (source.state_ & Family::kValid) == 0)
        return;
    // The old content goes last: the source may be a part of it.
    Record copy = Record();
    bool allocated = false;
    if (!CopyRecord(&copy, source.Side<Record>(), allocated))
        return;
    FreeSide<Record>();
    *target = copy;
    state_ &= static_cast<std::uint16_t>(~(Family::kHostOwned | Family::kOwned));
    state_ |= static_cast<std::uint16_t>(allocated ? Family::kValid | Family::kOwned : Family::kValid);
}

// Takes over one side of a value that was made for the purpose. The view of a cell has no place for the other
// family.
template <class Record>
void CXlOper::MoveSide(CXlOper& source) {
    using Family = RecordFamily<Record>;
    constexpr std::uint16_t bits = Family::kValid | Family::kOwned;
    Record* target = Side<Record>();
    if (target && (source.state_ & Family::kValid) != 0) {
        *target = *source.Side<Record>();
        state_ |= static_cast<std::uint16_t>(source.state_ & bits);
        source.state_ &= static_cast<std::uint16_t>(~bits);
    }
}

void CXlOper::CopyFrom(const CXlOper& source) {
    if (this != &source) {
        CopySide<XLOPER>(source);
        CopySide<XLOPER12>(source);
    }
}

namespace {

// For the view of a cell: an array releases what is in it, so a cell gets a copy of what the host owns.
template <class Record>
void TakeCopy(CXlOper& cell, const Record& record) {
    CXlOper filled;
    filled.TakeFromHost(record);
    cell = filled;
}

} // namespace

void CXlOper::TakeFromHost(XLOPER record) {
    if (IsCellView())
        return TakeCopy(*this, record);
    Free();
    Store(record, kValid4 | kHostOwned4);
}

void CXlOper::TakeFromHost(XLOPER12 record) {
    if (IsCellView())
        return TakeCopy(*this, record);
    Free();
    Store(record, kValid12 | kHostOwned12);
}

template <class Record>
bool CXlOper::CopyInto(Record& target, bool& allocated) const {
    if ((state_ & RecordFamily<Record>::kValid) != 0)
        return CopyRecord(&target, Side<Record>(), allocated);
    return Visit([&](const auto& record) { return CopyRecord(&target, &record, allocated); });
}

template bool CXlOper::CopyInto(XLOPER& target, bool& allocated) const;
template bool CXlOper::CopyInto(XLOPER12& target, bool& allocated) const;

// ---- Setters

// A view of a cell has the one side that its array has.
bool CXlOper::BuildsWide() const {
    return wide_ && (!narrow_ || HostFlag());
}

template <class Setter>
void CXlOper::SetPlain(bool freeFirst, Setter setter) {
    if (freeFirst)
        Free();
    const auto build = [&]<class Record>(Record record) {
        setter(record);
        Store(record, RecordFamily<Record>::kValid);
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
        // The old content goes last: the text may be a part of it.
        MakeText(record, text);
        if (freeFirst)
            Free();
        Store(record, RecordFamily<Record>::kValid | RecordFamily<Record>::kOwned);
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

// ---- Tests

std::uint16_t CXlOper::Type() const {
    return Visit([](const auto& record) { return TypeOf(record); });
}

} // namespace metrify
