#pragma once

// A function of the add-in at run time: the contents of its record, and its registration.

#include "xllrt/registry/function_record.h"

#include <string>
#include <vector>

namespace metrify {

/// What the host is given of a function in one record family.
template <class Char>
struct FunctionTexts {
    FunctionTexts() = default;
    /// Copies the texts. Null becomes the empty text.
    explicit FunctionTexts(const XlFunctionTexts<Char>& record);

    std::string entry;
    std::string type;
    std::basic_string<Char> argumentNames;
    std::basic_string<Char> category;
    std::basic_string<Char> description;
    std::vector<std::basic_string<Char>> argumentHelp;
};

struct CXlFunctionDescriptor {
    CXlFunctionDescriptor() = default;
    /// Copies the contents of the record. A missing narrow text is converted from the wide one.
    explicit CXlFunctionDescriptor(const XlFunctionRecord& record);

    FunctionTexts<char> narrow;
    FunctionTexts<XCHAR> wide;
    std::u16string functionName;
    std::uint16_t macroType = 1;
    std::string spareText; ///< always empty
    std::uint16_t helpId = 0;
    std::u16string helpTopic;
    std::u16string signature;
    std::int32_t minimumVersion = 0;
    std::int32_t maximumVersion = 0;
    double registerId = 0.0; ///< the id that the host assigned; 0 before that
    std::int32_t registered = 0;
};

} // namespace metrify
