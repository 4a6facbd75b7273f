#include "host/state/record_ledger.h"

#include "host/sheet/cell_records.h"
#include "xllrt/value/record_memory.h"

#include <cstdint>
#include <tuple>

namespace metrify::host {

RecordLedger::~RecordLedger() {
    for (Part& part : parts_) {
        for (auto& [memory, record] : part.out)
            if (auto* narrow = std::get_if<XLOPER>(&record))
                DeepFree(*narrow);
            else if (auto* wide = std::get_if<XLOPER12>(&record))
                DeepFree(*wide);
    }
}

RecordLedger::Part& RecordLedger::PartOf(const void* memory) {
    // Addresses of one thread are close together; the multiplication distributes them.
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    constexpr int kPartBits = 6;
    static_assert(std::tuple_size_v<decltype(parts_)> == std::size_t{1} << kPartBits);
    const std::uint64_t spread = reinterpret_cast<std::uintptr_t>(memory) * kSpread;
    return parts_[static_cast<std::size_t>(spread >> (64 - kPartBits))];
}

template <class Record>
void RecordLedger::Note(const Record& record) {
    const void* memory = MemoryOf(record);
    if (!memory)
        return;
    Part& part = PartOf(memory);
    const std::lock_guard lock(part.mutex);
    part.out.emplace(memory, record);
    ++part.counts.handed_out;
}

template <class Record>
void RecordLedger::Release(Record& record) {
    if (!PointsAtMemory(TypeOf(record)))
        return;
    Part& part = PartOf(MemoryOf(record));
    const std::lock_guard lock(part.mutex);
    const auto found = part.out.find(MemoryOf(record));
    if (found == part.out.end() || !std::holds_alternative<Record>(found->second)) {
        ++part.counts.refused;
        return;
    }
    DeepFree(std::get<Record>(found->second));
    part.out.erase(found);
    ++part.counts.returned;
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
    LedgerCounts sum;
    for (const Part& part : parts_) {
        const std::lock_guard lock(part.mutex);
        sum.handed_out += part.counts.handed_out;
        sum.returned += part.counts.returned;
        sum.refused += part.counts.refused;
    }
    return sum;
}

} // namespace metrify::host
