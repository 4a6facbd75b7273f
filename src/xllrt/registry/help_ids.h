#pragma once

// The ids of the functions in the add-in's help file.

#include "xllrt/registry/function_descriptor.h"

#include <map>
#include <span>
#include <string>

namespace metrify {

using CXlHelpIds = std::map<std::u16string, std::uint16_t>;

/// The first id for functions that specify none.
inline constexpr std::uint16_t kFirstHelpId = 1001;

/// Assigns an id to each function name: first those that specify one, then the others in the order of their
/// names. A function whose name is that of another one plus "Async" gets the same id.
CXlHelpIds AssignHelpIds(std::span<CXlFunctionDescriptor* const> functions);

/// The help argument of a function's registration: help file, "!" and the function's topic, or its id. Empty
/// if there is neither topic nor id.
std::u16string HelpText(const CXlFunctionDescriptor& descriptor, const std::string& help_file,
                        const CXlHelpIds& help_ids);

} // namespace metrify
