#include "xllrt/app/ribbon.h"

namespace metrify {

void PutRibbonDefault(CXlOper& result, const XlRibbonCallback& callback) {
    result.Free();
    switch (callback.type) {
    case 2:
    case 4:
    case 5:
    case 6:
    case 7:
    case 9:
    case 10:
    case 17:
    case 18:
    case 19:
    case 20:
    case 21:
    case 23:
    case 27:
    case 29:
    case 30:
        result.SetText("");
        break;
    case 3:
    case 11:
    case 12:
    case 13:
    case 14:
        result.SetBool(0);
        break;
    case 8:
    case 15:
    case 16:
    case 22:
    case 28:
        result.SetNumber(-1.0);
        break;
    default:
        break;
    }
}

} // namespace metrify
