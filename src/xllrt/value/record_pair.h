#pragma once

// The two records of a value and their state.

#include "xllrt/value/record_family.h"

namespace metrify {

/// A record of each family. The state tells which of them hold the value, and who owns the memory that they
/// point at. The view of an array's cell has only the record in the array, which owns that memory.
class CXlRecordPair {
  public:
    CXlRecordPair() : narrow_(&own_narrow_), wide_(&own_wide_) {}
    explicit CXlRecordPair(XLOPER* cell)
        : narrow_(cell), wide_(nullptr), state_(RecordFamily<XLOPER>::kValid | RecordFamily<XLOPER>::kOwned) {
    }
    explicit CXlRecordPair(XLOPER12* cell)
        : narrow_(nullptr), wide_(cell),
          state_(RecordFamily<XLOPER12>::kValid | RecordFamily<XLOPER12>::kOwned) {}
    CXlRecordPair(const CXlRecordPair&) = delete;
    CXlRecordPair& operator=(const CXlRecordPair&) = delete;
    ~CXlRecordPair() { Free(); }

    std::uint16_t State() const { return state_; }
    bool IsCellView() const { return !narrow_ || !wide_; }
    template <class Record>
    bool IsValid() const {
        return (state_ & RecordFamily<Record>::kValid) != 0;
    }
    template <class Record>
    bool IsOwned() const {
        return (state_ & RecordFamily<Record>::kOwned) != 0;
    }
    template <class Record>
    bool IsHostOwned() const {
        return (state_ & RecordFamily<Record>::kHostOwned) != 0;
    }

    /// The record of one family; null if the view of a cell has none.
    template <class Record>
    Record* Get() const;

    /// Calls the reader with the record that holds the value, the wide one if both do, or with an empty one.
    template <class Reader>
    auto Visit(Reader reader) const;

    /// Makes the record the only content. What was there is overwritten.
    template <class Record>
    void Store(const Record& record, std::uint16_t state);

    /// Releases what the records point at, to the host what the host owns, and leaves no value.
    void Free();

    /// Copies each valid record with all that it points at, in place of the record of that family. A record
    /// that cannot be copied leaves the one in the target unchanged.
    void CopyFrom(const CXlRecordPair& source);

    /// Moves the valid records here. They must not be owned by the host, and nothing may be stored here.
    void MoveFrom(CXlRecordPair& source);

    /// Copies the value into a record of a family. False if that family cannot hold it.
    template <class Record>
    bool CopyInto(Record& target, bool& allocated) const;

    /// Takes the record of a family out, with what it owns. An error takes the place of what moved.
    template <class Record>
    Record MoveOut(bool& allocated);

  private:
    template <class Record>
    void FreeRecord();
    template <class Record>
    void CopyRecordFrom(const CXlRecordPair& source);
    template <class Record>
    void MoveRecordFrom(CXlRecordPair& source);

    XLOPER own_narrow_ = XLOPER();
    XLOPER12 own_wide_ = XLOPER12();
    XLOPER* narrow_;
    XLOPER12* wide_;
    std::uint16_t state_ = 0;
};

template <>
inline XLOPER* CXlRecordPair::Get() const {
    return narrow_;
}

template <>
inline XLOPER12* CXlRecordPair::Get() const {
    return wide_;
}

template <class Record>
void CXlRecordPair::Store(const Record& record, std::uint16_t state) {
    if (narrow_)
        *narrow_ = XLOPER();
    if (wide_)
        *wide_ = XLOPER12();
    *Get<Record>() = record;
    state_ = state;
}

template <class Reader>
auto CXlRecordPair::Visit(Reader reader) const {
    static constexpr XLOPER none{};
    if (IsValid<XLOPER12>())
        return reader(*wide_);
    // The view of a wide cell has no narrow record.
    return reader(narrow_ ? *narrow_ : none);
}

/// A record of error 15, `#VALUE!`.
template <class Record>
Record ValueErrorRecord() {
    Record record = Record();
    record.xltype = xltypeErr;
    record.val.err = xlerrValue;
    return record;
}

} // namespace metrify
