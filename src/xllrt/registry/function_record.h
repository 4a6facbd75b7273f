#pragma once

// How the programmer of an add-in describes an exported function: one static record each.

#include "xllrt/value/host_records.h"

namespace metrify {

/// Every text may be null where nothing is said, and may refer to string resources.
struct XlFunctionRecord {
    XlFunctionRecord* next = nullptr; ///< filled when the record is linked
    const char* narrowEntry = nullptr;
    const char* wideEntry = nullptr;
    const char* narrowType = nullptr;
    const char* wideType = nullptr;
    const XCHAR* functionName = nullptr; ///< the name in the host
    const char* narrowArgumentNames = nullptr;
    const XCHAR* wideArgumentNames = nullptr; ///< with commas between
    int macroType = 1;                        ///< 1 function, 2 command; anything above is read as 1
    const char* narrowCategory = nullptr;
    const XCHAR* wideCategory = nullptr; ///< a name, or a number in text form
    const char* spareText = nullptr;     ///< not read
    std::uint16_t helpId = 0;            ///< 0 for automatic numbering
    const XCHAR* helpTopic = nullptr;
    const char* narrowDescription = nullptr;
    const XCHAR* wideDescription = nullptr;
    const char* narrowArgumentHelp = nullptr; ///< texts with their terminators, then an empty one
    const XCHAR* wideArgumentHelp = nullptr;  ///< the same
    const XCHAR* signature = nullptr;         ///< kept, and read by nobody here
    std::uint16_t minimumVersion = 0;         ///< of the host; 0 for any
    std::uint16_t maximumVersion = 0;
};

/// Puts the record, which must stay, at the head of the process's list.
void LinkFunctionRecord(XlFunctionRecord& record);

/// The head of the list: the record linked last.
const XlFunctionRecord* FirstFunctionRecord();

/// Links a record while the module is initialised.
class CXlFunctionRecordLink {
  public:
    explicit CXlFunctionRecordLink(XlFunctionRecord& record) { LinkFunctionRecord(record); }
};

} // namespace metrify
