#pragma once

// Memory behind records: texts, lists of rectangles and cells are made, copied and released here and nowhere
// else.

#include "xllrt/value/record_family.h"

#include <string_view>

namespace metrify {

/// Releases what a text, reference or array record points at, cells first, and zeroes value and type of the
/// record. Only for memory that was made here.
void DeepFree(XLOPER& record);
void DeepFree(XLOPER12& record);

/// A record that is released at the end, unless it is handed on.
template <class Record>
class RecordOwner {
  public:
    RecordOwner() = default;
    RecordOwner(const RecordOwner&) = delete;
    RecordOwner& operator=(const RecordOwner&) = delete;
    ~RecordOwner() { DeepFree(record); }

    /// The record, which whoever takes it has to release from here on.
    Record Release() {
        const Record released = record;
        record = Record();
        return released;
    }

    Record record = Record();
};

/// Makes the record a text of its own. Its old content is overwritten. A narrow record holds the first 255
/// bytes, from a wide text what its first 255 units come to; a wide record holds all, and a text beyond 65535
/// units wraps its count.
void MakeText(XLOPER& record, std::string_view text);
void MakeText(XLOPER& record, std::u16string_view text);
void MakeText(XLOPER12& record, std::string_view text);
void MakeText(XLOPER12& record, std::u16string_view text);

/// Makes the record an array of zeroed cells; false if the size is negative or beyond the family's limits.
/// The old content is overwritten.
bool MakeCells(XLOPER& record, const XlSize& size);
bool MakeCells(XLOPER12& record, const XlSize& size);

/// Copies a record, with all that it points at, within its family or into the other one. `allocated` tells
/// whether the copy has memory of its own to release. Without a target or a source, or from a record to
/// itself, nothing happens, and that is a success. False, with the target as it was, for a macro flow value,
/// for an array that is not well formed, and from wide to narrow for what the narrow family cannot hold: a
/// text longer than 255 units, an array of more than 65536 rows or 256 columns, a rectangle beyond them. No
/// other size is refused. Arrays are copied whole or not at all.
bool CopyRecord(XLOPER* target, const XLOPER* source, bool& allocated);
bool CopyRecord(XLOPER12* target, const XLOPER12* source, bool& allocated);
bool CopyRecord(XLOPER12* target, const XLOPER* source, bool& allocated);
bool CopyRecord(XLOPER* target, const XLOPER12* source, bool& allocated);

} // namespace metrify
