#pragma once

// Registers functions with the host, and unregisters them.

#include "xllrt/registry/function_descriptor.h"
#include "xllrt/registry/help_ids.h"
#include "xllrt/value/xl_oper.h"

#include <functional>
#include <string>

namespace metrify {

/// What a registration takes from the application.
struct RegistrationContext {
    CXlOper moduleName;                       ///< the host's path of the add-in
    std::function<int(CXlOper&)> askHostName; ///< asks the host for that path again; gives its code
    const std::string& helpFile;
    const CXlHelpIds& helpIds;
    bool shortRegistration; ///< functions without arguments are registered without their help texts
};

/// Registers a function in the family that the host and the function allow. True if it was registered, or if
/// this host does not need it.
bool RegisterFunction(const RegistrationContext& context, CXlFunctionDescriptor& descriptor);

/// Unregisters a function and removes its name. The host's return codes are ignored.
void UnregisterFunction(const RegistrationContext& context, CXlFunctionDescriptor& descriptor);

} // namespace metrify
