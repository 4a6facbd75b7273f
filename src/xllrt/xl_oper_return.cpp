// Handing a value to the host.

#include "xllrt/record_memory.h"
#include "xllrt/return_record.h"
#include "xllrt/thread_state.h"
#include "xllrt/xl_oper.h"

namespace metrify {

template <class Record>
Record* CXlOper::ReturnRecord(Record& kept) {
    using Bits = SideBits<Record>;
    ResetReturnRecord(kept);
    bool allocated = false;
    if ((state_ & Bits::kValid) != 0 && (state_ & Bits::kHostOwned) == 0) {
        // Moved, not copied: from here on the host says when it is released.
        kept = *Side<Record>();
        // The mark says who owns what the record points at. It is this value that knows.
        kept.xltype &= static_cast<std::uint16_t>(~xlbitDLLFree);
        allocated = (state_ & Bits::kOwned) != 0;
        state_ &= static_cast<std::uint16_t>(~Bits::kOwned);
    } else if (!(HasValue4() || HasValue12()) || !CopyInto(kept, allocated)) {
        kept.xltype = xltypeErr;
        kept.val.err = xlerrValue;
    }
    if (allocated) {
        kept.xltype |= xlbitDLLFree;
    }
    return &kept;
}

XLOPER12* CXlOper::ReturnValue12() {
    return ReturnRecord(ThisThreadState().return12);
}

XLOPER* CXlOper::ReturnValue4() {
    return ReturnRecord(ThisThreadState().return4);
}

} // namespace metrify
