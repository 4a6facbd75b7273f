#include "xllrt/app/xll_exports.h"

#include "xllrt/app/observer_function.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/value/return_record.h"

namespace metrify {

namespace {

// Intentional: exceptions of observers propagate to the host.
CXlOper ObserverAnswer(std::int32_t number, const CXlOper& first, const CXlOper& second) {
    CXlOper result(false);
    if (CXllApp* const application = CXllApp::Instance())
        DispatchEvent(*application, result, number, first, second);
    return result;
}

} // namespace

extern "C" {

int METRIFY_HOST_CALL xlAutoOpen() {
    return OpenAddIn();
}

int METRIFY_HOST_CALL xlAutoClose() {
    return CloseAddIn();
}

int METRIFY_HOST_CALL xlAutoAdd() {
    return AddAddIn();
}

int METRIFY_HOST_CALL xlAutoRemove() {
    return RemoveAddIn();
}

XLOPER12* METRIFY_HOST_CALL xlAddInManagerInfo12(XLOPER12* action) {
    return DescribeAddIn12(action);
}

XLOPER* METRIFY_HOST_CALL xlAddInManagerInfo(XLOPER* action) {
    return DescribeAddIn4(action);
}

void METRIFY_HOST_CALL xlAutoFree12(XLOPER12* record) {
    AutoFree12(record);
}

void METRIFY_HOST_CALL xlAutoFree(XLOPER* record) {
    AutoFree4(record);
}

XLOPER12* METRIFY_HOST_CALL CXlApp_ObserverEventHandler12(std::int32_t number, XLOPER12* first,
                                                          XLOPER12* second, XLOPER12* /*third*/) {
    return ObserverAnswer(number, CXlOper::Wrap12(first), CXlOper::Wrap12(second)).ReturnValue12();
}

XLOPER* METRIFY_HOST_CALL CXlApp_ObserverEventHandler4(std::int32_t number, XLOPER* first, XLOPER* second,
                                                       XLOPER* /*third*/) {
    return ObserverAnswer(number, CXlOper::Wrap4(first), CXlOper::Wrap4(second)).ReturnValue4();
}
}

} // namespace metrify
