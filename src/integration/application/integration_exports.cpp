#include "integration/application/integration_exports.h"

#include "integration/application/xll_com.h"
#include "integration/com/guarded.h"

namespace metrify {

namespace {

std::int32_t HandleEvent(XlMacroEvent event) {
    if (CXllCom* const com = CXllCom::Instance())
        Guarded([com, event] { com->HandleMacroEvent(event); });
    return 1;
}

} // namespace

extern "C" {

std::int32_t METRIFY_HOST_CALL xlCheckInstance() {
    if (CXllCom* const com = CXllCom::Instance())
        com->NoteCallback();
    return 1;
}

std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetActivate() {
    return HandleEvent(kMacroSheetActivate);
}

std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetDeactivate() {
    return HandleEvent(kMacroSheetDeactivate);
}

std::int32_t METRIFY_HOST_CALL CXllComImpl_OnCalculate() {
    return HandleEvent(kMacroCalculate);
}
}

} // namespace metrify
