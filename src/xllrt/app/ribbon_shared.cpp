// The commands of the shared ribbon.

#include "xllrt/app/ribbon.h"
#include "xllrt/app/ribbon_command.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/value/host_link.h"

namespace metrify {

bool CXlpRibbonImplShared::IsAvailable() const {
    // Older hosts have no ribbon.
    return HostFlag();
}

void CXlpRibbonImplShared::Activate() {
    SendRibbonCommand("<");
}

void CXlpRibbonImplShared::Deactivate() {
    SendRibbonCommand(">");
}

void CXlpRibbonImplShared::Reset() {
    SendRibbonCommand("");
}

void CXlpRibbonImplShared::Refresh() {
    CXllApp* const application = CXllApp::Instance();
    SendRibbonCommand(application ? application->addInName.Narrow() : "");
}

void CXlpRibbonImplShared::Invalidate(const CXlOper& item) {
    SendRibbonCommand("", item.ToWideText());
}

} // namespace metrify
