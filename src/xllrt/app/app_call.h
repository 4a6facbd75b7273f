#pragma once

// The call of an entry's body with the application's way of answering exceptions.

#include "xllrt/registry/function_result.h"

#include <utility>

namespace metrify {

/// Makes the result what the application makes of an exception; without application, what the runtime does.
void PutAppException(CXlOper& xloResult, const CXlRuntimeException& exception);

/// As `CallCommonFunction`, with the application's answer to exceptions.
template <class Body>
void CallAppFunction(CXlOper& xloResult, Body&& body) {
    CallCommonFunction(xloResult, std::forward<Body>(body), PutAppException);
}

} // namespace metrify
