#include "host/record_ledger.h"

#include "host/cell_records.h"
#include "xllrt/record_memory.h"

namespace metrify::host {

RecordLedger::~RecordLedger() {
    for (auto& [memory, record] : out_) {
        if (auto* narrow = std::get_if<XLOPER>(&record))
            DeepFree(*narrow);
        else if (auto* wide = std::get_if<XLOPER12>(&record))
            DeepFree(*wide);
    }
}

template <class Record>
void RecordLedger::Note(const Record& record) {
    const void* memory = MemoryOf(record);
    if (!memory)
        return;
    const std::lock_guard lock(mutex_);
    out_.emplace(memory, record);
    ++counts_.handed_out;
}

template <class Record>
void RecordLedger::Release(Record& record) {
    const std::uint16_t type = TypeOf(record);
    if (type != xltypeStr && type != xltypeRef && type != xltypeMulti)
        return;
    const std::lock_guard lock(mutex_);
    const auto found = out_.find(MemoryOf(record));
    if (found == out_.end() || !std::holds_alternative<Record>(found->second)) {
        ++counts_.refused;
        return;
    }
    DeepFree(std::get<Record>(found->second));
    out_.erase(found);
    ++counts_.returned;
    const auto word = record.xltype;
    record = Record();
    record.xltype = word;
}

void RecordLedger::HandOut(const XLOPER& record) {
    Note(record);
}

void RecordLedger::HandOut(const XLOPER12& record) {
    Note(record);
}

void RecordLedger::TakeBack(XLOPER& record) {
    Release(record);
}

void RecordLedger::TakeBack(XLOPER12& record) {
    Release(record);
}

LedgerCounts RecordLedger::Counts() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

} // namespace metrify::host
