#pragma once

// What memory the host handed out, and what it got back.

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
    /// Records given back that were not out: given back twice, or never the host's.
    std::size_t refused = 0;

    std::size_t Outstanding() const { return handed_out - returned; }
};

/// Owns the memory behind every record that is out. Records without memory are nobody's concern.
class RecordLedger {
  public:
    RecordLedger() = default;
    ~RecordLedger();
    RecordLedger(const RecordLedger&) = delete;
    RecordLedger& operator=(const RecordLedger&) = delete;

    /// Notes a record that goes out. Its memory stays the ledger's.
    void HandOut(const XLOPER& record);
    void HandOut(const XLOPER12& record);

    /// Releases the memory of a record that comes back, and makes its pointer null; the type stays.
    void TakeBack(XLOPER& record);
    void TakeBack(XLOPER12& record);

    LedgerCounts Counts() const;

  private:
    template <class Record>
    void Note(const Record& record);
    template <class Record>
    void Release(Record& record);

    // Threads that calculate at once rarely meet in a part. Each has a cache line of its own.
    struct alignas(64) Part {
        mutable std::mutex mutex;
        std::unordered_map<const void*, std::variant<XLOPER, XLOPER12>> out;
        LedgerCounts counts;
    };

    Part& PartOf(const void* memory);

    std::array<Part, 64> parts_;
};

} // namespace metrify::host
