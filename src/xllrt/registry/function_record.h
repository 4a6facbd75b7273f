#pragma once

// How the programmer of an add-in describes an exported function: one static record each.

#include "xllrt/text/xchar.h"

#include <cstdint>

namespace metrify {

/// What one record family needs to know of a function.
template <class Char>
struct XlFunctionTexts {
    const char* entry = nullptr;         ///< the name of the exported routine
    const char* type = nullptr;          ///< the types of the result and the arguments
    const Char* argumentNames = nullptr; ///< separated by commas
    const Char* category = nullptr;      ///< a name, or a number in text form
    const Char* description = nullptr;
    const Char* argumentHelp = nullptr; ///< texts with their terminators, then an empty one
};

/// Every text may be null. Those that the user sees may refer to string resources.
struct XlFunctionRecord {
    XlFunctionRecord* next = nullptr; ///< set when the record is linked
    XlFunctionTexts<char> narrow = {};
    XlFunctionTexts<XCHAR> wide = {};
    const XCHAR* functionName = nullptr; ///< the name in the host
    int macroType = 1;                   ///< 1 function, 2 command; anything above is read as 1
    const char* spareText = nullptr;     ///< not read
    std::uint16_t helpId = 0;            ///< 0 for automatic numbering
    const XCHAR* helpTopic = nullptr;    ///< takes the place of the help id
    const XCHAR* signature = nullptr;    ///< copied, but not read
    std::uint16_t minimumVersion = 0;    ///< of the host; 0 for any
    std::uint16_t maximumVersion = 0;
};

/// Links the record, which must stay in memory, at the head of the process's list.
void LinkFunctionRecord(XlFunctionRecord& record);

/// The head of the list: the record linked last.
const XlFunctionRecord* FirstFunctionRecord();

/// Links a record while the module is initialised.
class CXlFunctionRecordLink {
  public:
    explicit CXlFunctionRecordLink(XlFunctionRecord& record) { LinkFunctionRecord(record); }
};

} // namespace metrify
