#include "xllrt/app/app_call.h"

#include "xllrt/app/xll_app.h"

namespace metrify {

void PutAppException(CXlOper& xloResult, const CXlRuntimeException& exception) {
    if (CXllApp* const application = CXllApp::Instance())
        application->ExceptionToValue(xloResult, exception);
    else
        PutException(xloResult, exception);
}

} // namespace metrify
