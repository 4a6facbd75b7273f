#pragma once

// The memory that records point at: all texts, lists of rectangles and cells are allocated, copied and
// released here.

#include "xllrt/value/record_family.h"

#include <string_view>

namespace metrify {

/// Releases what a text, reference or array record points at, cells first, and zeroes value and type of the
/// record. Only for memory that was made here.
void DeepFree(XLOPER& record);
void DeepFree(XLOPER12& record);

/// A record that is released by the destructor, unless ownership was passed on.
template <class Record>
class RecordOwner {
  public:
    RecordOwner() = default;
    RecordOwner(const RecordOwner&) = delete;
    RecordOwner& operator=(const RecordOwner&) = delete;
    ~RecordOwner() { DeepFree(record); }

    /// Passes the record to the caller, who has to release it.
    Record Release() {
        const Record released = record;
        record = Record();
        return released;
    }

    Record record = Record();
};

/// Makes the record a text with its own memory. Its old content is overwritten. A narrow record holds the
/// first 255 bytes, or the first 255 units of a wide text converted; a wide record holds all, but the count
/// of a text of more than 65535 units wraps.
void MakeText(XLOPER& record, std::string_view text);
void MakeText(XLOPER& record, std::u16string_view text);
void MakeText(XLOPER12& record, std::string_view text);
void MakeText(XLOPER12& record, std::u16string_view text);

/// Makes the record an array of zeroed cells; false if the size is negative or beyond the family's limits.
/// The old content is overwritten.
bool MakeCells(XLOPER& record, const XlSize& size);
bool MakeCells(XLOPER12& record, const XlSize& size);

/// Copies a record, with all that it points at, within its family or into the other one. `allocated` is set
/// if the copy has memory to release. Without a target or a source, or from a record to itself, nothing
/// happens and the result is true. False, with the target unchanged, for a macro flow value, for an array
/// that is not well formed, and from wide to narrow for what the narrow family cannot represent: a text
/// longer than 255 units, an array of more than 65536 rows or 256 columns, a rectangle beyond them. No other
/// size is refused. Arrays are copied completely or not at all.
bool CopyRecord(XLOPER* target, const XLOPER* source, bool& allocated);
bool CopyRecord(XLOPER12* target, const XLOPER12* source, bool& allocated);
bool CopyRecord(XLOPER12* target, const XLOPER* source, bool& allocated);
bool CopyRecord(XLOPER* target, const XLOPER12* source, bool& allocated);

} // namespace metrify
