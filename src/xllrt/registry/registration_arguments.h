#pragma once

// The arguments of the host's registration call.

#include "xllrt/registry/function_descriptor.h"
#include "xllrt/value/xl_oper.h"

#include <string>
#include <vector>

namespace metrify {

/// The largest number of help texts in a narrow registration, so that the family's limit on arguments holds.
inline constexpr std::size_t kMaxNarrowArgumentHelps = 20;

/// The number of values before help and descriptions; a short registration has no others.
inline constexpr std::size_t kShortRegistration = 8;

/// The number of arguments of a function: the letters of its type text after the first character.
std::size_t CountArguments(const std::string& type_text);

/// The values of the host's registration call, from the wide texts or from the narrow ones. `help` is the
/// help argument.
std::vector<CXlOper> WideRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                      const std::u16string& help);
std::vector<CXlOper> NarrowRegistration(const CXlFunctionDescriptor& descriptor, const CXlOper& module_name,
                                        const std::u16string& help);

} // namespace metrify
