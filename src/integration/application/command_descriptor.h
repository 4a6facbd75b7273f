#pragma once

// Commands that the integration registers with the host.

#include "xllrt/registry/function_descriptor.h"

#include <string>

namespace metrify {

/// A command without arguments that returns an integer.
inline CXlFunctionDescriptor CommandDescriptor(const std::u16string& name, const std::string& entry) {
    static const std::string integer_type(1, 'J');
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = name;
    descriptor.narrow.entry = entry;
    descriptor.wide.entry = entry;
    descriptor.narrow.type = integer_type;
    descriptor.wide.type = integer_type;
    descriptor.macroType = 2;
    return descriptor;
}

} // namespace metrify
