#include "xllrt/app/ribbon_command.h"

#include "xllrt/app/xll_app.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/value/text_value.h"
#include "xllrt/value/thread_state.h"

namespace metrify {

namespace {

std::u16string AddInName() {
    CXllApp* const application = CXllApp::Instance();
    return application ? application->GetAddInName() : std::u16string();
}

} // namespace

void SendRibbonCommand(const std::string& first, const std::u16string& second) {
    CallDiscard(xlfRtd, TextValue("XlpRibbonServer.XlpRtdRibbonServer"), ThisThreadState().missing,
                TextValue(AddInName()), TextValue(first), TextValue(second));
}

} // namespace metrify
