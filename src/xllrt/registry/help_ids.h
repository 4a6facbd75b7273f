#pragma once

// The numbers under which the functions stand in the add-in's help file.

#include "xllrt/registry/function_descriptor.h"

#include <map>
#include <span>
#include <string>

namespace metrify {

using CXlHelpIds = std::map<std::u16string, std::uint16_t>;

/// Functions without an id of their own are numbered from here on.
inline constexpr std::uint16_t kFirstHelpId = 1001;

/// Numbers the functions, by name: ids of their own first, then the others in the order of their names. A
/// function whose name is another's and "Async" shares the other's id.
CXlHelpIds AssignHelpIds(std::span<CXlFunctionDescriptor* const> functions);

/// The help argument of a function's registration: help file, "!" and the function's topic, or its id. Empty
/// without topic and id.
std::u16string HelpText(const CXlFunctionDescriptor& descriptor, const std::string& help_file,
                        const CXlHelpIds& help_ids);

} // namespace metrify
