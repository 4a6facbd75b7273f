#include "xllrt/registry/function_result.h"

#include "xllrt/text/message_catalogue.h"
#include "xllrt/value/host_link.h"
#include "xllrt/value/thread_state.h"

#include <typeinfo>

namespace metrify {

void ApplyResult(CXlOper& xloResult, const CXlOper* returned) {
    if (!returned || returned == &xloResult)
        return;
    if (returned != &ThisThreadState().staticResult)
        throw CXlIllegalArgumentException(kMessageIllegalResult);
    xloResult.Free();
    xloResult.CopyFrom(*returned);
}

void PutException(CXlOper& xloResult, const CXlRuntimeException& exception) {
    // Exactly that class, not one derived from it.
    if (typeid(exception) == typeid(CXlErrorException)) {
        const auto& error = static_cast<const CXlErrorException&>(exception);
        xloResult.SetError(static_cast<int>(error.ErrorCode()));
        return;
    }
    if (HostFlag()) {
        std::u16string text;
        FormatMessageText(text, kMessageErrorCell, exception.WideMessage());
        xloResult.SetText(text);
    } else {
        std::string text;
        FormatMessageText(text, kMessageErrorCell, exception.what());
        xloResult.SetText(text);
    }
}

} // namespace metrify
