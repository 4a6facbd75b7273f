#include "xllrt/value/record_pair.h"

#include "xllrt/value/host_link.h"
#include "xllrt/value/record_memory.h"

namespace metrify {

// ---- Release

template <class Record>
void CXlRecordPair::FreeRecord() {
    Record* record = Get<Record>();
    if (!record)
        return;
    if (IsHostOwned<Record>())
        ReleaseToHost(*record);
    else if (IsOwned<Record>())
        DeepFree(*record);
    *record = Record();
}

void CXlRecordPair::Free() {
    FreeRecord<XLOPER>();
    FreeRecord<XLOPER12>();
    state_ = 0;
}

// ---- Copies

template <class Record>
void CXlRecordPair::CopyRecordFrom(const CXlRecordPair& source) {
    using Family = RecordFamily<Record>;
    Record* target = Get<Record>();
    if (!target || !source.IsValid<Record>())
        return;
    // The old content is released last: the source may be a part of it.
    Record copy = Record();
    bool allocated = false;
    if (!CopyRecord(&copy, source.Get<Record>(), allocated))
        return;
    FreeRecord<Record>();
    *target = copy;
    state_ &= static_cast<std::uint16_t>(~(Family::kHostOwned | Family::kOwned));
    state_ |= static_cast<std::uint16_t>(allocated ? Family::kValid | Family::kOwned : Family::kValid);
}

void CXlRecordPair::CopyFrom(const CXlRecordPair& source) {
    CopyRecordFrom<XLOPER>(source);
    CopyRecordFrom<XLOPER12>(source);
}

// The view of a cell has no place for the record of the other family.
template <class Record>
void CXlRecordPair::MoveRecordFrom(CXlRecordPair& source) {
    using Family = RecordFamily<Record>;
    constexpr std::uint16_t bits = Family::kValid | Family::kOwned;
    Record* target = Get<Record>();
    if (target && source.IsValid<Record>()) {
        *target = *source.Get<Record>();
        state_ |= static_cast<std::uint16_t>(source.state_ & bits);
        source.state_ &= static_cast<std::uint16_t>(~bits);
    }
}

void CXlRecordPair::MoveFrom(CXlRecordPair& source) {
    MoveRecordFrom<XLOPER>(source);
    MoveRecordFrom<XLOPER12>(source);
}

template <class Record>
bool CXlRecordPair::CopyInto(Record& target, bool& allocated) const {
    if (IsValid<Record>())
        return CopyRecord(&target, Get<Record>(), allocated);
    return Visit([&](const auto& record) { return CopyRecord(&target, &record, allocated); });
}

template bool CXlRecordPair::CopyInto(XLOPER& target, bool& allocated) const;
template bool CXlRecordPair::CopyInto(XLOPER12& target, bool& allocated) const;

template <class Record>
Record CXlRecordPair::MoveOut(bool& allocated) {
    Record& own = *Get<Record>();
    Record moved = own;
    // The mark tells who owns what the record points at. That is known here, whatever the record says.
    moved.xltype &= static_cast<std::uint16_t>(~xlbitDLLFree);
    allocated = IsOwned<Record>();
    if (allocated && PointsAtMemory(TypeOf(own)))
        own = ValueErrorRecord<Record>();
    state_ &= static_cast<std::uint16_t>(~RecordFamily<Record>::kOwned);
    return moved;
}

template XLOPER CXlRecordPair::MoveOut(bool& allocated);
template XLOPER12 CXlRecordPair::MoveOut(bool& allocated);

} // namespace metrify
