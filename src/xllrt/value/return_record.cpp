#include "xllrt/value/return_record.h"

#include "xllrt/value/record_memory.h"

#include <algorithm>

namespace metrify {

namespace {

template <class Record>
void AutoFree(Record* record) {
    if (!record)
        return;
    if (PointsAtMemory(TypeOf(*record)))
        DeepFree(*record);
}

// Only memory that was marked for the host to give back is the record's own: a wrapped argument that was
// returned points at somebody else's.
template <class Record>
void Reset(Record& record) {
    if ((record.xltype & xlbitDLLFree) != 0)
        DeepFree(record);
    record = Record();
}

template <class Record>
bool IsPartOfRecord(const Record& part, const Record& whole) {
    const std::uint16_t type = TypeOf(whole);
    if (!PointsAtMemory(type))
        return false;
    if (TypeOf(part) == type && part.val.str == whole.val.str)
        return true;
    const Record* cells = type == xltypeMulti ? whole.val.array.lparray : nullptr;
    return std::any_of(cells, cells + (cells ? CellCountOf(whole) : 0),
                       [&part](const Record& cell) { return IsPartOfRecord(part, cell); });
}

} // namespace

void AutoFree12(XLOPER12* record) {
    AutoFree(record);
}

void AutoFree4(XLOPER* record) {
    AutoFree(record);
}

void ResetReturnRecord(XLOPER& record) {
    Reset(record);
}

void ResetReturnRecord(XLOPER12& record) {
    Reset(record);
}

bool IsPartOf(const XLOPER& part, const XLOPER& whole) {
    return IsPartOfRecord(part, whole);
}

bool IsPartOf(const XLOPER12& part, const XLOPER12& whole) {
    return IsPartOfRecord(part, whole);
}

} // namespace metrify
