#pragma once

// What the host is told of a function when it is registered.

#include "xllrt/registry/function_descriptor.h"
#include "xllrt/value/xl_oper.h"

#include <string>
#include <vector>

namespace metrify {

/// The help texts of a narrow registration, so that its values don't outnumber what the family takes.
inline constexpr std::size_t kMaxNarrowArgumentHelps = 20;

/// The number of values in front of help and descriptions, which is all of a short registration.
inline constexpr std::size_t kShortRegistration = 8;

/// The arguments of a function: the letters of its type text behind the first character.
std::size_t CountArguments(const std::string& type_text);

/// The values of the host's registration call, in the wide members or in the narrow ones. `help` is the help
/// argument.
std::vector<CXlOper> WideRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                      const std::u16string& help);
std::vector<CXlOper> NarrowRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                        const std::u16string& help);

} // namespace metrify
