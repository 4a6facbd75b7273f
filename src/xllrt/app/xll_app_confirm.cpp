// The question whether an add-in that lacks some of its functions is wanted all the same.

#include "xllrt/app/xll_app.h"
#include "xllrt/gate/host_window.h"
#include "xllrt/text/message_catalogue.h"

namespace metrify {

bool CXllApp::ConfirmRegistrationFailure() {
    std::u16string names;
    for (const CXlFunctionDescriptor* descriptor : functions.All())
        if (descriptor->registered == 0)
            names += descriptor->functionName + u"\n";
    if (names.empty())
        return true;
    std::u16string text;
    FormatMessageText(text, kMessageRegistrationFailed, GetAddInName(), names);
    return Windows().AskYesNo(GetHostWindow(), text, WideMessageText(kMessageLoadFailureTitle));
}

} // namespace metrify
