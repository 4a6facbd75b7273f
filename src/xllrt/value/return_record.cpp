#include "xllrt/value/return_record.h"

#include "xllrt/value/record_memory.h"

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

} // namespace metrify
