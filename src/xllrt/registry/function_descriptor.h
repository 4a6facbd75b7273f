#pragma once

// A function of the add-in at run time: what its record says, in both widths, and what the host made of it.

#include "xllrt/registry/function_record.h"

#include <string>
#include <vector>

namespace metrify {

struct CXlFunctionDescriptor {
    CXlFunctionDescriptor() = default;
    /// Takes over the record's texts. A narrow text that is missing is made from the wide one.
    explicit CXlFunctionDescriptor(const XlFunctionRecord& record);

    std::string narrowEntry;
    std::string wideEntry;
    std::string narrowType;
    std::string wideType;
    std::u16string functionName;
    std::string narrowArgumentNames;
    std::u16string wideArgumentNames;
    std::uint16_t macroType = 1;
    std::string narrowCategory;
    std::u16string wideCategory;
    std::string spareText;
    std::uint16_t helpId = 0;
    std::u16string helpTopic;
    std::string narrowDescription;
    std::u16string wideDescription;
    std::vector<std::string> narrowArgumentHelp;
    std::vector<std::u16string> wideArgumentHelp;
    std::u16string signature;
    std::int32_t minimumVersion = 0;
    std::int32_t maximumVersion = 0;
    double registerId = 0.0; ///< the id the host gave; 0 while it has given none
    std::int32_t registered = 0;
};

} // namespace metrify
