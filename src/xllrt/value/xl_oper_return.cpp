// Handing a value to the host.

#include "xllrt/value/record_memory.h"
#include "xllrt/value/return_record.h"
#include "xllrt/value/thread_state.h"
#include "xllrt/value/xl_oper.h"

#include <algorithm>

namespace metrify {

namespace {

template <class Record>
Record ErrorValue() {
    Record record = Record();
    record.xltype = xltypeErr;
    record.val.err = xlerrValue;
    return record;
}

// True if what the part points at is released with the whole.
template <class Record>
bool IsPartOf(const Record& part, const Record& whole) {
    const std::uint16_t type = TypeOf(whole);
    if (!PointsAtMemory(type))
        return false;
    if (TypeOf(part) == type && part.val.str == whole.val.str)
        return true;
    const Record* cells = type == xltypeMulti ? whole.val.array.lparray : nullptr;
    return std::any_of(cells, cells + (cells ? CellCountOf(whole) : 0),
                       [&part](const Record& cell) { return IsPartOf(part, cell); });
}

} // namespace

// The record of a side that the host does not own, for the host to release what this value owned.
template <class Record>
Record CXlOper::MoveToReturn(bool& allocated) {
    using Family = RecordFamily<Record>;
    Record& own = *Side<Record>();
    Record moved = own;
    // The mark says who owns what the record points at. It is this value that knows.
    moved.xltype &= static_cast<std::uint16_t>(~xlbitDLLFree);
    allocated = (state_ & Family::kOwned) != 0;
    if (allocated && PointsAtMemory(TypeOf(own)))
        own = ErrorValue<Record>();
    state_ &= static_cast<std::uint16_t>(~Family::kOwned);
    return moved;
}

template <class Record>
Record* CXlOper::ReturnRecord(Record& kept) {
    using Family = RecordFamily<Record>;
    Record returned = Record();
    bool allocated = false;
    const bool is_valid = (state_ & Family::kValid) != 0;
    const bool keeps_memory = (kept.xltype & xlbitDLLFree) != 0;
    // What was returned before goes last: a wrapped record may point into it, and is copied then.
    if (is_valid && (state_ & Family::kHostOwned) == 0 && !(keeps_memory && IsPartOf(*Side<Record>(), kept)))
        returned = MoveToReturn<Record>(allocated);
    else if (!(HasValue4() || HasValue12()) || !CopyInto(returned, allocated))
        returned = ErrorValue<Record>();
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
