#pragma once

// The way of a call through an exported entry: from the common function to the value that the host gets.

#include "xllrt/fault/exceptions.h"
#include "xllrt/fault/se_translator.h"
#include "xllrt/value/xl_oper.h"

namespace metrify {

/// Takes over what a common function returned. Null and the address of the result itself leave the result as
/// it is, the thread's static result is copied into it, and any other pointer throws a
/// `CXlIllegalArgumentException`.
void ApplyResult(CXlOper& xloResult, const CXlOper* returned);

/// Makes the result what the exception says: the error of a `CXlErrorException`, for every other class the
/// text
/// "#ERROR: " with the exception's message. This is what an application does unless it has a way of its own.
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
