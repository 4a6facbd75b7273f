#pragma once

// Calls the body of an entry point; the application converts exceptions.

#include "xllrt/registry/function_result.h"

#include <utility>

namespace metrify {

/// Converts an exception to a result by the application or, without one, by the runtime's default.
void PutAppException(CXlOper& xloResult, const CXlRuntimeException& exception);

/// As `CallCommonFunction`, but the application converts exceptions.
template <class Body>
void CallAppFunction(CXlOper& xloResult, Body&& body) {
    CallCommonFunction(xloResult, std::forward<Body>(body), PutAppException);
}

} // namespace metrify
