#include "integration/com/integration_exports.h"

#include "integration/com/guarded.h"
#include "integration/com/xll_com.h"

namespace metrify {

namespace {

std::int32_t HandleEvent(std::size_t index) {
    if (CXllCom* const com = CXllCom::Instance())
        Guarded([com, index] { com->HandleMacroEvent(index); });
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
    return HandleEvent(0);
}

std::int32_t METRIFY_HOST_CALL CXllComImpl_OnSheetDeactivate() {
    return HandleEvent(1);
}

std::int32_t METRIFY_HOST_CALL CXllComImpl_OnCalculate() {
    return HandleEvent(2);
}
}

} // namespace metrify
