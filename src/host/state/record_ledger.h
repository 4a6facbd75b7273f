#pragma once

// Accounting of the memory that the host hands out in records and gets back.

#include "xllrt/value/host_records.h"

#include <array>
#include <cstddef>
#include <mutex>
#include <unordered_map>
#include <variant>

namespace metrify::host {

struct LedgerCounts {
    std::size_t handed_out = 0;
    std::size_t returned = 0;
    /// Records that were returned twice or never came from the host.
    std::size_t refused = 0;

    std::size_t Outstanding() const { return handed_out - returned; }
};

/// Owns the memory of every record that was handed out and not returned. Records without memory are ignored.
class RecordLedger {
  public:
    RecordLedger() = default;
    ~RecordLedger();
    RecordLedger(const RecordLedger&) = delete;
    RecordLedger& operator=(const RecordLedger&) = delete;

    /// Enters a record that is handed out. The ledger owns its memory.
    void HandOut(const XLOPER& record);
    void HandOut(const XLOPER12& record);

    /// Releases the memory of a returned record and sets its pointer to null; the type is kept.
    void TakeBack(XLOPER& record);
    void TakeBack(XLOPER12& record);

    LedgerCounts Counts() const;

  private:
    template <class Record>
    void Note(const Record& record);
    template <class Record>
    void Release(Record& record);

    // Several parts, each with its lock and on its own cache line, so that threads rarely wait for each
    // other.
    struct alignas(64) Part {
        mutable std::mutex mutex;
        std::unordered_map<const void*, std::variant<XLOPER, XLOPER12>> out;
        LedgerCounts counts;
    };

    Part& PartOf(const void* memory);

    std::array<Part, 64> parts_;
};

} // namespace metrify::host
