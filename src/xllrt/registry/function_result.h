#pragma once

// The result of an exported entry: from the common function to the value that the host gets.

#include "xllrt/fault/exceptions.h"
#include "xllrt/fault/se_translator.h"
#include "xllrt/value/xl_oper.h"

namespace metrify {

/// Applies what a common function returned. Null and the address of the result itself leave the result
/// unchanged, the thread's static result is copied into it, and any other pointer throws a
/// `CXlIllegalArgumentException`.
void ApplyResult(CXlOper& xloResult, const CXlOper* returned);

/// Makes the result the error of a `CXlErrorException`, or for every other class the text "#ERROR: " with the
/// exception's message. Applications do this by default.
void PutException(CXlOper& xloResult, const CXlRuntimeException& exception);

/// Calls the body of an entry, which returns a pointer to its result or null. Faults of the operating system
/// and exceptions of the runtime end in `on_exception(xloResult, exception)`; other exceptions pass.
template <class Body, class OnException>
void CallCommonFunction(CXlOper& xloResult, Body&& body, OnException&& on_exception) {
    try {
        const CXlSeTranslatorScope translator;
        translator.Run([&] { ApplyResult(xloResult, body()); });
    } catch (const CXlRuntimeException& exception) {
        on_exception(xloResult, exception);
    }
}

} // namespace metrify
